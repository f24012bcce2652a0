#include "qdscenegraph/optimize/CSGOptimizer.h"

#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"

bool CSGOptimizer::OptimizeNonTargetTransforms(CSGNode* pNode, const std::vector<CSGAnimation*>&)
{
    QD_CHECK_ARG(pNode, false);
    for (CSGNode* pInTree = pNode; pInTree != nullptr; pInTree = pInTree->GetNextInTree(pNode))
    {
        CSGData_LocalTransform* pLocal = pInTree->FindData<CSGData_LocalTransform>();
        if (pLocal == nullptr)
        {
            continue;
        }
        const CTransform3 objTransform = pLocal->GetTransform();
        QD_CHECK_CALL(pInTree->RemoveData(pLocal), false);
        if (!objTransform.IsIdentity())
        {
            const auto spCollapsed = CSGData_LocalTransform::Create(CSGXFrm_Transform3::Create(objTransform));
            QD_CHECK_CREATED(spCollapsed, false);
            QD_CHECK_CALL(pInTree->AddData(spCollapsed.get()), false);
        }
    }
    return true;
}
