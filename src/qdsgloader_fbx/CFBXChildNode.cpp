#include "qdsgloader_fbx/CFBXChildNode.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"

CSGNode* CFBXChildNode::Add(CSGNode& rNode, const CQDString& rName, const CTransform3& rLocal)
{
    const CSGNode::CNodePtr spChild =
        CSGNode::Create(CQDCompactString(CQDString(rNode.GetGlobalName().GetView()) + "/" + rName),
                        CQDCompactString(CQDString(rNode.GetLocalName().GetView()) + "/" + rName));
    QD_CHECK_CREATED(spChild, nullptr);
    if (!rLocal.IsIdentity())
    {
        const auto spTransform = CSGXFrm_Transform3::Create(rLocal);
        QD_CHECK_CREATED(spTransform, nullptr);
        const auto spData = CSGData_LocalTransform::Create(spTransform);
        QD_CHECK_CREATED(spData, nullptr);
        QD_CHECK_CALL(spChild->AddData(spData.get()), nullptr);
    }
    QD_CHECK_CALL(rNode.AddChild(spChild.get()), nullptr);
    return spChild.get();
}
