// Reading sources: layouts, and accessors that do not fit their arrays.
#include "qdsgloader_collada/CCDS_FloatArray.h"
#include "qdsgloader_collada/CCDS_IDRefArray.h"
#include "qdsgloader_collada/CCDS_StringArray.h"
#include "qdsgloader_collada/CColladaTestScene.h"

#include <1.4/dom/domSource.h>
#include <gtest/gtest.h>

namespace
{

using CDataSourcePtr = CColladaDataSourceType::CDataSourcePtr;

// What the source "s" of a mesh becomes.
CDataSourcePtr Read(const std::string& rSource)
{
    CQDSGLoaderColladaLib::InitLibrary();
    CDaeFile objFile;
    if (!objFile.OpenMemory("source.dae", DaeTestDocument("<library_geometries><geometry><mesh>" + rSource +
                                                          "</mesh></geometry></library_geometries>")))
    {
        ADD_FAILURE() << objFile.GetErrorText();
        return nullptr;
    }
    return CColladaDataSourceType::CreateDataSource(*static_cast<ColladaDOM141::domSource*>(
        CSGLoaderCollada::GetIDElement(&objFile.GetDAE(), "s", ColladaDOM141::domSource::ID())));
}

std::string P(const std::string& rName, const std::string& rType = "float")
{
    return "<param name=\"" + rName + "\" type=\"" + rType + "\"/>";
}

const std::string UNNAMED = "<param type=\"float\"/>";

} // namespace

TEST(ColladaDataSource, Layouts)
{
    struct CCase
    {
        std::string strAccessor;
        std::string strParams;
        int32_t nPrimitivesPerValue;
        std::vector<float> vecExpected;
    };
    const CCase arrCases[] = {
        {"count=\"3\" stride=\"3\"", TEST_XYZ, 3, {0, 1, 2, 3, 4, 5, 6, 7, 8}},
        {"count=\"2\" stride=\"3\" offset=\"1\"", TEST_XYZ, 3, {1, 2, 3, 4, 5, 6}},
        {"count=\"2\" stride=\"4\"", P("X") + P("Y"), 2, {0, 1, 4, 5}},
        {"count=\"2\" stride=\"4\" offset=\"2\"", P("X") + P("Y") + P("Z"), 3, {2, 3, 4, 6, 7, 8}},
        {"count=\"3\" stride=\"3\"", UNNAMED + P("Y"), 1, {1, 4, 7}},
        {"count=\"2\" stride=\"3\"", P("X") + UNNAMED + P("Z"), 2, {0, 2, 3, 5}},
        {"count=\"3\"", P("X"), 1, {0, 1, 2}}, // the stride is 1 when it is not there
        {"count=\"2\" stride=\"2\"", UNNAMED + UNNAMED, 2, {0, 1, 2, 3}},
        {"count=\"2\" stride=\"4\"", P("C", "float4"), 4, {0, 1, 2, 3, 4, 5, 6, 7}},
        {"count=\"0\" stride=\"3\"", TEST_XYZ, 3, {}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CDataSourcePtr spSource =
            Read(TestSource("s", "0 1 2 3 4 5 6 7 8", rCase.strAccessor, rCase.strParams));
        ASSERT_TRUE(spSource) << rCase.strAccessor;
        ASSERT_TRUE(spSource->InstanceOf(&CCDS_FloatArray::ms_objType));
        const auto arrPrimitives = static_cast<const CCDS_FloatArray&>(*spSource).GetPrimitives();
        EXPECT_EQ(spSource->GetPrimitivesPerValue(), rCase.nPrimitivesPerValue) << rCase.strAccessor;
        EXPECT_EQ(std::vector<float>(arrPrimitives.begin(), arrPrimitives.end()), rCase.vecExpected)
            << rCase.strAccessor << rCase.strParams;
    }
}

TEST(ColladaDataSource, Faults)
{
    const std::string strCreate = "1 Failed to create float array data source for <source id=\"s\">";
    const std::string strLayout = "1 Failed to create primitive layout for <source id=\"s\">";
    const std::string strWhere =
        " in <param name=\"X\"> in <accessor> in <technique_common> in <source id=\"s\">";
    struct CCase
    {
        std::string strSource;
        std::vector<std::string> vecLines;
    };
    const auto TooSmall = [&](const std::string& rAccessor, const std::string& rParams,
                              const std::string& rValue) {
        return CCase{TestSource("s", "0 1 2 3 4 5 6 7 8", rAccessor, rParams),
                     {"1 Source array was too small to get value at " + rValue, strCreate}};
    };
    const CCase arrCases[] = {
        TooSmall("count=\"4\" stride=\"3\"", TEST_XYZ, "3"),
        TooSmall("count=\"3\" stride=\"3\" offset=\"1\"", TEST_XYZ, "2"),
        TooSmall("count=\"1\" stride=\"3\" offset=\"7\"", TEST_XYZ, "0"),
        TooSmall("count=\"1\" stride=\"3\" offset=\"18446744073709551615\"", TEST_XYZ, "0"),
        TooSmall("count=\"18446744073709551615\" stride=\"3\"", TEST_XYZ, "3"),
        TooSmall("count=\"6148914691236517206\" stride=\"3\"", TEST_XYZ, "3"), // 3 * count wraps round to 2
        TooSmall("count=\"2\" stride=\"18446744073709551615\"", TEST_XYZ, "1"),
        TooSmall("count=\"2000000000\" stride=\"0\"", P("X"), "144"), // memory for what is only claimed
        {TestSource("s", "1", "count=\"1\"", ""),
         {"1 Handed in invalid number of primitives per value 0.", strCreate}},
        {TestSource("s", "1", "count=\"1\"", "<param name=\"X\"/>"),
         {"1 Had NULL type" + strWhere, strLayout}},
        {TestSource("s", "1", "count=\"1\"", P("X", "int")),
         {"1 Unknown primitive type name \"int\"", "1 Unknown type int" + strWhere, strLayout}},
        {TestSource("s", "1", "count=\"1\"", P("X", "name")),
         {"1 Incorrect type name" + strWhere, strLayout}},
        {"<source id=\"s\"><float_array id=\"a\">1</float_array></source>",
         {"1 <source id=\"s\"> had NULL <technique_common>"}},
        {"<source id=\"s\"><float_array id=\"a\">1</float_array><technique_common/></source>",
         {"1 <technique_common> in <source id=\"s\"> had NULL <accessor>"}},
        {"<source id=\"s\"><float_array id=\"a\">1</float_array><technique_common><accessor source=\"#b\" "
         "count=\"1\"/></technique_common></source>",
         {"1 Failed to find element named \"b\".", "1 URI referenced NULL element.",
          "1 URI for <accessor> in <source id=\"s\"> referred to NULL <float_array>"}},
    };
    for (const CCase& rCase : arrCases)
    {
        CLogCapture objLog;
        EXPECT_FALSE(Read(rCase.strSource)) << rCase.strSource;
        std::vector<std::string> vecExpected = rCase.vecLines;
        vecExpected.push_back("1 Failed to create data source with matching type for <source>");
        EXPECT_EQ(objLog.GetLines(), vecExpected) << rCase.strSource;
    }
    CLogCapture objLog;
    EXPECT_FALSE(Read("<source id=\"s\"><bool_array id=\"a\">1</bool_array></source>"));
    EXPECT_EQ(objLog.GetLines(), std::vector<std::string>{"1 Couldn't find matching type for <source>"});
}

TEST(ColladaDataSource, NamesAndIDs)
{
    const auto Source = [](const std::string& rElement, const std::string& rType) {
        return "<source id=\"s\"><" + rElement + " id=\"a\">hip knee</" + rElement +
               "><technique_common><accessor source=\"#a\" count=\"2\">" + P("JOINT", rType) +
               "</accessor></technique_common></source>";
    };
    const CDataSourcePtr spNames = Read(Source("Name_array", "name"));
    ASSERT_TRUE(spNames && spNames->InstanceOf(&CCDS_StringArray::ms_objType));
    EXPECT_EQ(static_cast<CCDS_StringArray&>(*spNames).GetValue(1)[0], "knee");
    const CDataSourcePtr spIDs = Read(Source("IDREF_array", "IDREF"));
    ASSERT_TRUE(spIDs && spIDs->InstanceOf(&CCDS_IDRefArray::ms_objType));
    EXPECT_EQ(static_cast<CCDS_IDRefArray&>(*spIDs).GetValue(0)[0], "hip");
    EXPECT_FALSE(Read(Source("Name_array", "float")));
    // An id of its own is not asked for.
    EXPECT_TRUE(Read("<source id=\"s\"><float_array id=\"s\">1</float_array><technique_common><accessor "
                     "source=\"#s\" count=\"1\">" +
                     P("X") + "</accessor></technique_common></source>"));
}

TEST(ColladaDataSource, AccessByIndex)
{
    const auto spSource = CCDS_FloatArray::Create(2, 3);
    CLogCapture objLog;
    EXPECT_TRUE(spSource->SetValue(1, std::vector<float>{1, 2}));
    EXPECT_TRUE(spSource->SetPrimitive(2, 1, 3));
    EXPECT_EQ(std::vector<float>(spSource->GetPrimitives().begin(), spSource->GetPrimitives().end()),
              (std::vector<float>{0, 0, 1, 2, 0, 3}));
    EXPECT_EQ(*spSource->GetPrimitive(1, 1), 2.0f);
    EXPECT_TRUE(objLog.GetLines().empty());

    EXPECT_FALSE(spSource->SetValue(0, std::vector<float>{1, 2, 3}));
    EXPECT_TRUE(spSource->GetValue(3).empty());
    EXPECT_EQ(spSource->GetPrimitive(-1, 0), nullptr);
    EXPECT_FALSE(spSource->SetPrimitive(0, 2, 0));
    EXPECT_FALSE(CCDS_FloatArray::Create(0, 1));
    EXPECT_FALSE(CCDS_FloatArray::Create(1, -1));
    EXPECT_EQ(
        objLog.GetLines(),
        (std::vector<std::string>{"1 Value given has 3 primitives.  This source has 2 primitives per value.",
                                  "1 Handed in invalid index 3", "1 Handed in invalid value index -1",
                                  "1 Handed in invalid primitive index 2",
                                  "1 Handed in invalid number of primitives per value 0.",
                                  "1 Handed in invalid number of values -1."}));
}

TEST(ColladaDataSource, Registry)
{
    CQDSGLoaderColladaLib::InitLibrary();
    CLogCapture objLog;
    EXPECT_EQ(CColladaDataSourceType::FindType("CCDS_StringArray"), &CCDS_StringArray::ms_objType);
    EXPECT_FALSE(CColladaDataSourceType::RegisterDataSourceType(&CCDS_FloatArray::ms_objType));
    {
        CColladaDataSourceType objSameName(99, "CCDS_FloatArray", nullptr, nullptr);
        EXPECT_FALSE(CColladaDataSourceType::RegisterDataSourceType(&objSameName));
        EXPECT_FALSE(CColladaDataSourceType::UnregisterDataSourceType(&objSameName));
        CColladaDataSourceType objNew(99, "new", nullptr, [](ColladaDOM141::domSource&) { return false; });
        EXPECT_TRUE(CColladaDataSourceType::RegisterDataSourceType(&objNew));
    }
    EXPECT_EQ(CColladaDataSourceType::FindType(99), nullptr);
    EXPECT_EQ(objLog.GetLines(), (std::vector<std::string>{
                                     "1 DataSource type 1 CCDS_FloatArray was already registered.",
                                     "1 Already had geometry type named CCDS_FloatArray registered.",
                                     "1 DataSource type 99 CCDS_FloatArray was not registered.",
                                     "1 DataSource type 99 new was still registered at destructor time."}));
}
