// Real files: one scene saved in several versions has the same objects, connections and transforms.
#include "FBXTestTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

namespace
{

using Lines = std::multiset<std::string>;

// Without the names that only some versions give.
std::string DescribeObject(const CFBXObjectTable& rTable, int64_t nId)
{
    const CFBXObject* pObject = rTable.FindObject(nId);
    const bool bNamed =
        pObject != nullptr &&
        (pObject->strClass == "Model" || pObject->strClass == "Material" || pObject->strClass == "Texture");
    return pObject == nullptr || bNamed
               ? Describe(rTable, nId)
               : std::string(pObject->strClass) + " " + std::string(pObject->strKind);
}

std::string DescribeTransform(const CFBXProperties& rProperties)
{
    std::string strText;
    for (const char* szProperty :
         {"Lcl Translation", "Lcl Rotation", "Lcl Scaling", "RotationOffset", "RotationPivot",
          "ScalingOffset", "ScalingPivot", "PreRotation", "PostRotation", "GeometricTranslation",
          "GeometricRotation", "RotationOrder", "Visibility"})
    {
        for (const double dNumber : GetNumbers(rProperties, szProperty))
        {
            // Versions round differently, and some write the defaults of templates.
            const double dDefault =
                std::string_view(szProperty) == "Lcl Scaling" || std::string_view(szProperty) == "Visibility"
                    ? 1
                    : 0;
            strText += std::abs(dNumber - dDefault) > 1e-3
                           ? " " + std::string(szProperty) + " " + std::to_string(std::lround(dNumber * 100))
                           : "";
        }
    }
    return strText;
}

Lines DescribeScene(const std::string& rPath)
{
    constexpr std::string_view CLASSES[] = {"Model", "Geometry", "NodeAttribute", "Material",      "Texture",
                                            "Video", "Deformer", "Pose",          "AnimationCurve"};
    CQDString strError;
    std::unique_ptr<CFBXDocument> spDocument = CFBXDocument::Load(rPath, strError);
    const auto spTable =
        spDocument != nullptr ? CFBXObjectTable::Create(std::move(spDocument), strError) : nullptr;
    EXPECT_NE(spTable, nullptr) << rPath << ": " << strError;
    if (spTable == nullptr)
    {
        return {};
    }
    Lines setLines;
    for (const CFBXObject& rObject : spTable->GetObjects())
    {
        if (std::ranges::count(CLASSES, rObject.strClass) == 0)
        {
            continue;
        }
        std::set<std::string> setEnds;
        for (const CFBXConnection& rConnection : spTable->GetDestinations(rObject.nId))
        {
            const std::string strEnd = DescribeObject(*spTable, rConnection.nDestination);
            setEnds.insert(" -> " + strEnd + " " + std::string(rConnection.strDestinationProperty));
        }
        std::string strLine = DescribeObject(*spTable, rObject.nId);
        for (const std::string& rEnd : setEnds)
        {
            strLine += rEnd;
        }
        setLines.insert(strLine +
                        (rObject.strClass == "Model" ? DescribeTransform(rObject.objProperties) : ""));
    }
    return setLines;
}

} // namespace

TEST(CFBXObjectTable, SamplesInSeveralVersions)
{
    const std::string strFolder = QDSG_SAMPLES_DIR "/fbx/ufbx__ufbx/data/";
    if (!std::filesystem::is_directory(strFolder))
    {
        GTEST_SKIP() << "no samples";
    }
    const char* const SCENES[][2] = {
        {"maya_pivot_offset_6100_ascii", "maya_pivot_offset_7700_binary"},
        {"maya_split_pivot_6100_binary", "maya_split_pivot_7700_ascii"},
        {"max_transformed_skin_6100_binary", "max_transformed_skin_7500_binary"},
        {"maya_shared_textures_6100_ascii", "maya_shared_textures_7500_ascii"},
        {"maya_textured_cube_6100_binary", "maya_textured_cube_7500_binary"},
        {"maya_blend_shape_cube_6100_ascii", "maya_blend_shape_cube_7700_ascii"},
        {"maya_node_attribute_zoo_6100_ascii", "maya_node_attribute_zoo_7500_binary"},
        {"maya_lod_group_6100_binary", "maya_lod_group_7500_ascii"},
        {"maya_anim_extrapolation_6100_binary", "maya_anim_extrapolation_7700_ascii"},
        {"maya_unicode_6100_binary", "maya_unicode_7400_binary"},
        {"maya_cube_big_endian_6100_binary", "maya_cube_big_endian_7500_binary"},
        {"max2009_blob_5800_ascii", "max2009_blob_6100_ascii"},
        {"max2009_blob_5800_binary", "max2009_blob_6100_binary"},
        {"max2009_cube_anim_5800_binary", "max2009_cube_anim_6100_ascii"},
    };
    for (const auto& [szOld, szNew] : SCENES)
    {
        EXPECT_EQ(DescribeScene(strFolder + szOld + ".fbx"), DescribeScene(strFolder + szNew + ".fbx"))
            << szOld;
    }
}
