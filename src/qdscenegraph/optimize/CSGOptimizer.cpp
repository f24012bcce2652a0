#include "qdscenegraph/optimize/CSGOptimizer.h"

#include "qdcommon/CPointerMap.h"
#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/reference/CSGRefContext.h"
#include "qdscenegraph/reference/CSGRefFind.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"

#include <boost/container/small_vector.hpp>
#include <unordered_map>
#include <unordered_set>

namespace
{

using CTransformPtr = CSGTransform::CTransformPtr;

// Equal names share their characters.
struct CNameHash
{
    size_t operator()(const CQDCompactString& rName) const
    {
        return std::hash<const char*>()(rName.GetView().data());
    }
};
using CNames = std::unordered_set<CQDCompactString, CNameHash>;

// The transforms in a tree that channels write. The tree keeps them alive.
class CAnimatedTransforms
{
  public:
    CAnimatedTransforms(CSGNode* pRoot, const std::vector<CSGAnimation*>& rvecAnimations)
    {
        CSGRefContext objContext(pRoot);
        for (const CSGAnimation* pAnimation : rvecAnimations)
        {
            for (int32_t n = 0; pAnimation != nullptr && n < pAnimation->GetNumChannels(); ++n)
            {
                AddChannel(pRoot, objContext, pAnimation->GetChannel(n));
            }
        }
        if (!m_mapNames.empty())
        {
            AddNamed(pRoot, objContext);
        }
    }

    bool Contains(const CSGTransform* pTransform) const { return m_setTransforms.Find(pTransform, false); }

  private:
    void AddChannel(CSGNode* pRoot, CSGRefContext& rContext, const CSGAnimChannel* pChannel)
    {
        QD_CHECK_ARG(pChannel, );
        const CSGRefPath* pPath = pChannel->GetTargetRef();
        QD_CHECK_NOT_NULL(pPath, );
        CQDCompactString strNode;
        CQDCompactString strTransform;
        if (pPath->GetTransformNames(strNode, strTransform))
        {
            m_mapNames[strNode].insert(strTransform);
        }
        else
        {
            AddIfTransform(pPath->Resolve(pRoot, &rContext)); // one that is found by other means
        }
    }

    void AddIfTransform(CSGStreamable* pObject)
    {
        if (const auto* pTransform = SGStreamableCast<CSGTransform>(pObject))
        {
            m_setTransforms.Add(pTransform, true);
        }
    }

    // The tree may be posed as a part of another one, or part by part: a name stands for all its nodes.
    void AddNamed(CSGNode* pRoot, CSGRefContext& rContext)
    {
        for (CSGNode* pNode = pRoot; pNode != nullptr; pNode = pNode->GetNextInTree(pRoot))
        {
            const auto it = m_mapNames.find(pNode->GetGlobalName());
            auto* pLocal = it != m_mapNames.end() ? pNode->FindData<CSGData_LocalTransform>() : nullptr;
            if (pLocal == nullptr)
            {
                continue;
            }
            for (const CQDCompactString& rName : it->second)
            {
                AddIfTransform(CSGRefFind_TransformByName::Find(pLocal, rName, &rContext));
            }
        }
    }

    std::unordered_map<CQDCompactString, CNames, CNameHash> m_mapNames; // of transforms, by their nodes'
    CPointerMap<bool> m_setTransforms;
};

// What a product is collapsed to, built factor by factor.
class CFactors
{
  public:
    // Null when nothing but identities was added; pOriginal when that has the same factors.
    bool GetProduct(CSGTransformProduct* pOriginal, CTransformPtr& rspProduct);

    // Appends a transform that stays as it is.
    bool Keep(CSGTransform* pTransform)
    {
        QD_CHECK_CALL(CloseRun(), false);
        m_vecFactors.push_back(pTransform);
        return true;
    }

    // Appends one of which only the effect matters.
    void Collapse(CSGTransform* pTransform)
    {
        const CTransform3 objTransform = pTransform->GetTransform();
        if (!objTransform.IsIdentity())
        {
            m_spOnlyInRun = m_bInRun ? nullptr : pTransform;
            m_objRun = m_bInRun ? m_objRun * objTransform : objTransform;
            m_bInRun = true;
        }
    }

  private:
    bool CloseRun()
    {
        // One that stands alone has nothing to be collapsed with.
        if (m_bInRun && !m_spOnlyInRun && !m_objRun.IsIdentity())
        {
            m_spOnlyInRun = CSGXFrm_Transform3::Create(m_objRun);
            QD_CHECK_CREATED(m_spOnlyInRun, false);
        }
        if (m_spOnlyInRun)
        {
            m_vecFactors.push_back(std::move(m_spOnlyInRun));
        }
        m_bInRun = false;
        return true;
    }

    bool HasFactorsOf(const CSGTransformProduct& rProduct) const
    {
        bool bEqual = rProduct.GetNumTransforms() == static_cast<int32_t>(m_vecFactors.size());
        for (int32_t n = 0; bEqual && n < rProduct.GetNumTransforms(); ++n)
        {
            bEqual = rProduct.GetTransformObject(n) == m_vecFactors[static_cast<size_t>(n)];
        }
        return bEqual;
    }

    boost::container::small_vector<CTransformPtr, 8> m_vecFactors;
    // The product of all that was collapsed since the last factor.
    CTransform3 m_objRun;
    CTransformPtr m_spOnlyInRun; // null for none and for several
    bool m_bInRun = false;
};

bool CFactors::GetProduct(CSGTransformProduct* pOriginal, CTransformPtr& rspProduct)
{
    QD_CHECK_CALL(CloseRun(), false);
    if (m_vecFactors.size() <= 1)
    {
        rspProduct = m_vecFactors.empty() ? nullptr : m_vecFactors.front();
    }
    else if (pOriginal != nullptr && HasFactorsOf(*pOriginal))
    {
        rspProduct = pOriginal;
    }
    else
    {
        rspProduct = CSGXFrm_List::Create({m_vecFactors.data(), m_vecFactors.size()});
        QD_CHECK_CREATED(rspProduct, false);
    }
    return true;
}

// What is shared is collapsed once, and stays shared.
class CTransformCollapser
{
  public:
    explicit CTransformCollapser(const CAnimatedTransforms& rAnimated) : m_rAnimated(rAnimated) {}

    // The cheapest transform that does the same; null for one that does nothing.
    bool Collapse(CSGTransform* pTransform, CTransformPtr& rspResult)
    {
        CSGTransformProduct* pProduct = AsProduct(pTransform);
        const bool bShared = pProduct != nullptr && IsShared(pProduct);
        if (bShared)
        {
            if (const auto it = m_mapShared.find(pProduct); it != m_mapShared.end())
            {
                rspResult = it->second.m_spResult;
                return true;
            }
        }
        CFactors objFactors;
        QD_CHECK_CALL(pProduct != nullptr ? AppendFactors(objFactors, *pProduct)
                                          : Append(objFactors, pTransform),
                      false);
        QD_CHECK_CALL(objFactors.GetProduct(pProduct, rspResult), false);
        if (bShared)
        {
            m_mapShared.emplace(pProduct, CShared{pProduct, rspResult});
        }
        return true;
    }

  private:
    struct CShared
    {
        CTransformPtr m_spOriginal; // so that no other transform comes to have its address
        CTransformPtr m_spResult;
    };

    // Also when all but one of those that share it are collapsed.
    bool IsShared(const CSGTransformProduct* pProduct) const
    {
        return pProduct->IsShared() || m_mapShared.contains(pProduct);
    }

    // Null for what has no factors, and for a product that is to stay as it is.
    CSGTransformProduct* AsProduct(CSGTransform* pTransform) const
    {
        return m_rAnimated.Contains(pTransform) ? nullptr : dynamic_cast<CSGTransformProduct*>(pTransform);
    }

    bool AppendFactors(CFactors& rFactors, const CSGTransformProduct& rProduct)
    {
        for (int32_t n = 0; n < rProduct.GetNumTransforms(); ++n)
        {
            QD_CHECK_CALL(Append(rFactors, rProduct.GetTransformObject(n)), false);
        }
        return true;
    }

    // Products stand in each other no deeper than a file may nest its objects.
    bool Append(CFactors& rFactors, CSGTransform* pTransform)
    {
        CSGTransformProduct* pProduct = AsProduct(pTransform);
        if (pProduct == nullptr)
        {
            return AppendFactor(rFactors, pTransform, false);
        }
        if (!IsShared(pProduct))
        {
            return AppendFactors(rFactors, *pProduct);
        }
        CTransformPtr spTransform;
        QD_CHECK_CALL(Collapse(pProduct, spTransform), false);
        return AppendFactor(rFactors, spTransform.get(), AsProduct(spTransform.get()) != nullptr);
    }

    bool AppendFactor(CFactors& rFactors, CSGTransform* pTransform, bool bKeep) const
    {
        if (pTransform == nullptr)
        {
            return true;
        }
        if (bKeep || m_rAnimated.Contains(pTransform))
        {
            return rFactors.Keep(pTransform);
        }
        rFactors.Collapse(pTransform);
        return true;
    }

    const CAnimatedTransforms& m_rAnimated;
    std::unordered_map<const CSGTransform*, CShared> m_mapShared;
};

} // namespace

bool CSGOptimizer::OptimizeNonTargetTransforms(CSGNode* pNode,
                                               const std::vector<CSGAnimation*>& rvecAnimations)
{
    QD_CHECK_ARG(pNode, false);
    const CAnimatedTransforms objAnimated(pNode, rvecAnimations);
    CTransformCollapser objCollapser(objAnimated);
    for (CSGNode* pInTree = pNode; pInTree != nullptr; pInTree = pInTree->GetNextInTree(pNode))
    {
        auto* pLocal = pInTree->FindData<CSGData_LocalTransform>();
        if (pLocal == nullptr)
        {
            continue;
        }
        CTransformPtr spTransform;
        QD_CHECK_CALL(objCollapser.Collapse(pLocal->GetTransformObject(), spTransform), false);
        if (!spTransform)
        {
            QD_CHECK_CALL(pInTree->RemoveData(pLocal), false);
        }
        else if (spTransform != pLocal->GetTransformObject())
        {
            QD_CHECK_CALL(pLocal->SetTransformObject(spTransform.get()), false);
        }
    }
    return true;
}
