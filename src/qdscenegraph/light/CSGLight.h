// The base of everything that gives light.
#pragma once

#include "qdcommon/CColor.h"
#include "qdcommon/CQDCompactString.h"
#include "qdcommon/CTransform3.h"
#include "qdscenegraph/object/CSGTypeInfo.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

struct CSGLightState;

// A light has no place of its own: it stands where the node that carries it stands, and shines along that
// node's -Z. One light may stand on several nodes.
class CSGLight : public SGStreamableInterface<CSGLight>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGLight";

    // May be empty.
    const CQDCompactString& GetName() const { return m_strName; }
    void SetName(const CQDCompactString& rName) { m_strName = rName; }
    // The light's strength is part of it: components may be above 1. Opacity is always 1.
    const CColor& GetColor() const { return m_objColor; }
    void SetColor(const CColor& rColor) { m_objColor = {rColor.r, rColor.g, rColor.b, 1.0f}; }
    virtual const CSGTypeInfo<CSGLight>* GetTypeInfo() const = 0;

    // Sets the whole state to this light as it shines from a node with the world transform. Lights that have
    // no place and no direction leave the state without: all of its position is 0.
    virtual void SetupLightState(CSGLightState& rState, const CTransform3& rWorld) const;

    // The record begins with the name and the red, green and blue of the colour.
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // Written to the log at level 7, one line behind the indent.
    virtual void OutputDebugInfo(const CQDString& rIndent) const;

  protected:
    // The world's direction in which a node's -Z points, of length 1; -Z itself where the transform leaves no
    // direction.
    static CSGFloat3 GetDirection(const CTransform3& rWorld);

  private:
    CQDCompactString m_strName;
    CColor m_objColor = {1.0f, 1.0f, 1.0f, 1.0f};
};

// Base of a concrete kind of light T, which declares `static const CSGTypeInfo<CSGLight> ms_objTypeInfo`.
template <class T>
class CSGLightInterface : public SGStreamableDerivedInterface<T, CSGLight>
{
  public:
    // With everything else at its default; null (reported) without memory.
    static boost::intrusive_ptr<T> Create(const CQDCompactString& rName, const CColor& rColor)
    {
        boost::intrusive_ptr<T> spLight = CSGMem::Construct<T>();
        if (spLight)
        {
            spLight->SetName(rName);
            spLight->SetColor(rColor);
        }
        return spLight;
    }

    const CSGTypeInfo<CSGLight>* GetTypeInfo() const override { return &T::ms_objTypeInfo; }
};
