// A chain of references: the way from a node to what an animation writes.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/material/CSGMaterial.h"
#include "qdscenegraph/reference/CSGRef.h"

#include <vector>

// Each reference searches from what the one before it has found, the first from where the path is resolved.
class CSGRefPath final : public SGStreamableInterface<CSGRefPath>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGRefPath";
    using CRefPathPtr = boost::intrusive_ptr<CSGRefPath>;

    // Each reference of a path may search a whole tree.
    static constexpr int32_t MAX_REFS = 64;

    // An empty path: it leads to where it starts, and to no target.
    static CRefPathPtr Create();
    // From a tree, to a part of the transform with the name in the local transform of a node.
    static CRefPathPtr ForTransform(const CQDCompactString& rNodeGlobalName,
                                    const CQDCompactString& rTransformName, ETarget eTarget);
    // From a tree, to the visibility of a node.
    static CRefPathPtr ForVisibility(const CQDCompactString& rNodeGlobalName);
    // From a tree, to a part of a parameter of a material.
    static CRefPathPtr ForMaterialParam(const CQDCompactString& rMaterialGlobalName,
                                        CSGMaterial::EParam eParam, ETarget eTarget);

    // Appends at the end. False (reported) for null, and when the path is full.
    bool AddRef(const CSGRefPtr& spRef);
    int32_t GetNumRefs() const { return static_cast<int32_t>(m_vecRefs.size()); }
    // Null for an index that is out of range.
    CSGRef* GetRef(int32_t nIndex) const;

    // The object at the end of the path; null when it is not there, which is not reported. The context, when
    // there is one, is that of pFrom's tree: worth making for more than a few paths.
    CSGStreamable* Resolve(CSGStreamable* pFrom, CSGRefContext* pContext = nullptr) const;
    // The target at the end of the path, a new one for each call. Null when its object is not there, which is
    // not reported; and (reported) when the object has no such part, or the path's last reference is no
    // CSGATFRef.
    CSGATFPtr ResolveTarget(CSGStreamable* pFrom, CSGRefContext* pContext = nullptr) const;

    // A node has been renamed: whether the path names it. References that paths share change for all of them.
    bool RenameNode(const CQDCompactString& rOldName, const CQDCompactString& rNewName);
    // Whether the path leads to a transform by the names of its node and of the transform itself; it need not
    // be there. The names are left alone when not.
    bool GetTransformNames(CQDCompactString& rNodeGlobalName, CQDCompactString& rTransformName) const;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    // A loaded path has a reference in every place.
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override { m_vecRefs.clear(); }
    // Written to the log at level 7, each line behind the indent.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    static CRefPathPtr Create(std::initializer_list<CSGRefPtr> arrRefs);
    // Where the path stands before its last reference.
    CSGStreamable* ResolveToLast(CSGStreamable* pFrom, CSGRefContext* pContext) const;

    std::vector<CSGRefPtr> m_vecRefs;
};

using CSGRefPathPtr = CSGRefPath::CRefPathPtr;
