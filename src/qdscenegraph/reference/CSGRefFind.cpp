#include "qdscenegraph/reference/CSGRefFind.h"

#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/reference/CSGRefContext.h"
#include "qdscenegraph/reference/CSGTransformWalk.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"

namespace
{

CSGMaterial* FindMaterial(const CSGNode* pRoot, const CQDCompactString& rName)
{
    for (auto* pNode = pRoot; pNode != nullptr; pNode = pNode->GetNextInTree(pRoot))
    {
        const auto* pData = pNode->FindData<CSGData_Material>();
        CSGMaterial* pMaterial = pData != nullptr ? pData->GetMaterial() : nullptr;
        if (pMaterial != nullptr && pMaterial->GetGlobalName() == rName)
        {
            return pMaterial;
        }
    }
    return nullptr;
}

CSGTransform* FindTransform(CSGTransform* pRoot, const CQDCompactString& rName)
{
    CSGTransformWalk objWalk(pRoot);
    CSGTransform* pTransform = objWalk.Next();
    while (pTransform != nullptr && pTransform->GetName() != rName)
    {
        pTransform = objWalk.Next();
    }
    return pTransform;
}

// The context, when it knows the names of this object's tree.
CSGRefContext* GetContextOf(const CSGStreamable* pRoot, CSGRefContext* pContext)
{
    return pContext != nullptr && pContext->GetRoot() == pRoot ? pContext : nullptr;
}

} // namespace

CSGStreamable* CSGRefFind_Target::Find(CSGStreamable* pFrom, ETarget, CSGRefContext*) { return pFrom; }

CSGStreamable* CSGRefFind_DataByType::Find(CSGStreamable* pFrom, const CQDCompactString& rTypeName,
                                           CSGRefContext*)
{
    const auto* pNode = SGStreamableCast<CSGNode>(pFrom);
    const CSGDataTypeInfo* pTypeInfo = CSGDataTypeInfo::GetTypeMap().Find(CQDString(rTypeName.GetView()));
    return pNode != nullptr && pTypeInfo != nullptr ? pNode->GetDataSet().FindData(pTypeInfo) : nullptr;
}

CSGStreamable* CSGRefFind_DescendantNodeByGlobalName::Find(CSGStreamable* pFrom,
                                                           const CQDCompactString& rName,
                                                           CSGRefContext* pContext)
{
    const auto* pNode = SGStreamableCast<CSGNode>(pFrom);
    if (pNode == nullptr || rName.empty())
    {
        return nullptr;
    }
    CSGRefContext* pIndex = GetContextOf(pNode, pContext);
    return pIndex != nullptr ? pIndex->FindNode(rName) : pNode->FindNodeByGlobalName(rName);
}

CSGStreamable* CSGRefFind_ChildNodeByLocalName::Find(CSGStreamable* pFrom, const CQDCompactString& rName,
                                                     CSGRefContext*)
{
    auto* pNode = rName.empty() ? nullptr : SGStreamableCast<CSGNode>(pFrom);
    const CSGNode* pRoot = pNode;
    do
    {
        pNode = pNode != nullptr ? pNode->GetNextInTree(pRoot) : nullptr;
    } while (pNode != nullptr && pNode->GetLocalName() != rName);
    return pNode;
}

CSGStreamable* CSGRefFind_MaterialByGlobalName::Find(CSGStreamable* pFrom, const CQDCompactString& rName,
                                                     CSGRefContext* pContext)
{
    const auto* pNode = SGStreamableCast<CSGNode>(pFrom);
    if (pNode == nullptr || rName.empty())
    {
        return nullptr;
    }
    CSGRefContext* pIndex = GetContextOf(pNode, pContext);
    return pIndex != nullptr ? pIndex->FindMaterial(rName) : FindMaterial(pNode, rName);
}

CSGStreamable* CSGRefFind_MaterialParam::Find(CSGStreamable* pFrom, CSGMaterial::EParam eParam,
                                              CSGRefContext*)
{
    const auto* pMaterial = SGStreamableCast<CSGMaterial>(pFrom);
    return pMaterial != nullptr ? pMaterial->GetParam(eParam) : nullptr;
}

CSGStreamable* CSGRefFind_TransformByName::Find(CSGStreamable* pFrom, const CQDCompactString& rName,
                                                CSGRefContext* pContext)
{
    if (rName.empty())
    {
        return nullptr;
    }
    const auto* pLocal = SGStreamableCast<CSGData_LocalTransform>(pFrom);
    CSGTransform* pRoot =
        pLocal != nullptr ? pLocal->GetTransformObject() : SGStreamableCast<CSGTransform>(pFrom);
    return pContext != nullptr ? pContext->FindTransform(pRoot, rName) : FindTransform(pRoot, rName);
}
