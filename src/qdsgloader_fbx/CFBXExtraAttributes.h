// What an artist asks of a node by user properties, and of all nodes below it.
#pragma once

#include <cstdint>
#include <optional>

class CSGNode;
class FbxNode;

// Handed down the hierarchy: a node has the attributes of its parent, but for those that it sets itself.
class CFBXExtraAttributes
{
  public:
    // Takes those of the node's user properties that are known: "vantor_doublesided", "vantor_alphablend",
    // "vantor_mipmapbias", "vantor_depthbias" and "vantor_donotcull". All others are named in the log.
    void CheckFBXObjectForExtraAttributes(const FbxNode& rNode);
    // Sets what concerns the render state; false (reported) when the node cannot have one.
    bool ApplyToRenderState(CSGNode& rNode) const;

    // Whether materials of the node blend; empty where nothing is said.
    const std::optional<bool>& GetAlphaBlend() const { return m_bAlphaBlend; }
    // Added to the level of detail that the node's samplers choose; empty where nothing is said.
    const std::optional<float>& GetMipMapBias() const { return m_fMipMapBias; }

  private:
    std::optional<bool> m_bDoubleSided;
    std::optional<bool> m_bAlphaBlend;
    std::optional<float> m_fMipMapBias;
    std::optional<float> m_fDepthBias;
    std::optional<bool> m_bDoNotCull;
};
