#include "qdsgloader_fbx/CFBXSceneDump.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLog.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <unordered_map>

namespace
{

void LogVector(const char* szName, const FbxDouble3& rVector)
{
    Log(QD_FBX, LOG_DETAIL, "        %s: %g %g %g", szName, rVector[0], rVector[1], rVector[2]);
}

void LogNode(const FbxNode& rNode, size_t nDepth)
{
    constexpr size_t MAX_INDENT = 64; // further in it cannot be read
    const CQDString strIndent(std::min(2 * nDepth, MAX_INDENT), ' ');
    Log(QD_FBX, LOG_DETAIL, "    %s%s", strIndent, rNode.GetName());
    for (int n = 0; n < rNode.GetNodeAttributeCount(); ++n)
    {
        Log(QD_FBX, LOG_DETAIL, "    %s  attribute type %d", strIndent,
            static_cast<int>(rNode.GetNodeAttributeByIndex(n)->GetAttributeType()));
    }
    for (int n = 0; n < rNode.GetMaterialCount(); ++n)
    {
        Log(QD_FBX, LOG_DETAIL, "    %s  material '%s'", strIndent, rNode.GetMaterial(n)->GetName());
    }
}

void LogTransform(const FbxNode& rNode)
{
    Log(QD_FBX, LOG_DETAIL, "    %s", rNode.GetName());
    LogVector("translation", rNode.GetLclTranslation());
    LogVector("rotation", rNode.GetLclRotation());
    LogVector("scaling", rNode.GetLclScaling());
    LogVector("rotation offset", rNode.GetRotationOffset());
    LogVector("rotation pivot", rNode.GetRotationPivot());
    LogVector("pre-rotation", rNode.GetPreRotation());
    LogVector("post-rotation", rNode.GetPostRotation());
    LogVector("scaling offset", rNode.GetScalingOffset());
    LogVector("scaling pivot", rNode.GetScalingPivot());
    Log(QD_FBX, LOG_DETAIL, "        rotation order %d, inherit type %d",
        static_cast<int>(rNode.GetRotationOrder()), static_cast<int>(rNode.GetTransformationInheritType()));
}

} // namespace

void CFBXSceneDump::Log(std::span<FbxNode* const> arrHierarchy)
{
    std::unordered_map<const FbxNode*, size_t> mapDepths;
    ::Log(QD_FBX, LOG_DETAIL, "Hierarchy and materials:");
    for (const FbxNode* pNode : arrHierarchy)
    {
        const size_t nDepth = pNode->GetParent() == nullptr ? 0 : mapDepths[pNode->GetParent()] + 1;
        mapDepths[pNode] = nDepth;
        LogNode(*pNode, nDepth);
    }
    ::Log(QD_FBX, LOG_DETAIL, "Transforms:");
    for (const FbxNode* pNode : arrHierarchy)
    {
        LogTransform(*pNode);
    }
}
