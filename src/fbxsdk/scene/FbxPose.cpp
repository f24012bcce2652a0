#include "fbxsdk/scene/FbxPose.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/objects/CFBXObjectTable.h"
#include "fbxsdk/scene/FbxScene.h"
#include "qdcommon/CLog.h"

FbxPose::FbxPose(const CFBXObject& rObject) : FbxObject(&rObject), m_bBindPose(rObject.strKind == "BindPose")
{}

std::unique_ptr<FbxPose> FbxPose::Create(const CFBXObjectTable& rTable, const CFBXObject& rObject)
{
    std::unique_ptr<FbxPose> spPose(new FbxPose(rObject));
    if (rObject.pRecord == nullptr)
    {
        return spPose;
    }
    for (const CFBXRecord& rEntry : rObject.pRecord->GetChildren())
    {
        const CFBXRecord* pNode = rEntry.FindChild("Node");
        const CFBXRecord* pMatrix = rEntry.FindChild("Matrix");
        if (rEntry.GetName() != "PoseNode" || pNode == nullptr || pMatrix == nullptr)
        {
            continue;
        }
        const std::optional<FbxAMatrix> objMatrix = FbxAMatrix::FromRecord(*pMatrix);
        if (!objMatrix)
        {
            Log(FBXSDK, LOG_WARNING, "Pose '%s' has no matrix of 16 numbers in %s", spPose->GetName(),
                pMatrix->Describe());
            continue;
        }
        CEntry& rNew = spPose->m_vecEntries.emplace_back();
        rNew.m_pNodeObject = rTable.FindObject(pNode->GetValue(0));
        rNew.m_objMatrix = *objMatrix;
    }
    return spPose;
}

void FbxPose::OnConnected()
{
    for (CEntry& rEntry : m_vecEntries)
    {
        FbxObject* pNode =
            rEntry.m_pNodeObject != nullptr ? GetScene()->FindObject(rEntry.m_pNodeObject->nId) : nullptr;
        rEntry.m_pNode = dynamic_cast<FbxNode*>(pNode);
    }
}
