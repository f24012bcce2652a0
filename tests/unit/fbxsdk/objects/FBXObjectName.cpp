// Names as files of each encoding and version write them.
#include "fbxsdk/objects/FBXObjectName.h"

#include <gtest/gtest.h>

using namespace std::literals;

TEST(FBXObjectName, CutsTheClass)
{
    const struct
    {
        std::string_view strFullName;
        bool bASCII;
        std::string_view strName;
    } CASES[] = {
        {"Box\0\1Model"sv, false, "Box"},      {"a::b\0\1Model"sv, false, "a::b"},
        {"\0\1Geometry"sv, false, ""},         {"Model::Box", true, "Box"},
        {"Model::rig::Box", true, "rig::Box"}, {"SubDeformer::", true, ""},
        {"Model::Box", false, "Box"},          {"rig::Box", false, "rig::Box"},
        {"Fbx_Root", true, "Fbx_Root"},        {"", true, ""},
    };
    for (const auto& rCase : CASES)
    {
        EXPECT_EQ(CutFBXClass(rCase.strFullName, "Model", rCase.bASCII), rCase.strName) << rCase.strFullName;
    }
}

TEST(FBXObjectName, CutsOnlyMarksOfClashes)
{
    const std::string_view CASES[][2] = {
        {"pSphere1_ncl1_1", "pSphere1"},
        {"_ncl1_12", ""},
        {"a_ncl1_1_ncl1_2", "a_ncl1_1"},
        {"a_ncl1_", "a_ncl1_"},
        {"a_ncl_1", "a_ncl_1"},
        {"a_ncl1_b", "a_ncl1_b"},
        {"a_ncl", "a_ncl"},
    };
    for (const auto& [strName, strCut] : CASES)
    {
        EXPECT_EQ(CutFBXClash(strName), strCut);
    }
}
