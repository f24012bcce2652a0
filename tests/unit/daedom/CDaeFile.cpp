// Documents of every kind, sound and damaged, through the reader.
#include "daedom/CDaeFile.h"

#include "daedom/CDaeTestDocument.h"
#include "daedom/CDaeUri.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

#include <dae/daeError.h>

#include <filesystem>
#include <pthread.h>

namespace
{

std::string Repeat(std::string_view strText, size_t nTimes)
{
    std::string strResult;
    for (size_t n = 0; n < nTimes; ++n)
    {
        strResult += strText;
    }
    return strResult;
}

std::string MeshWith(std::string_view strContent)
{
    return DaeTestDocument("<library_geometries><geometry id=\"g\"><mesh><source id=\"s\">" +
                           std::string(strContent) + "</source></mesh></geometry></library_geometries>");
}

std::string NestedNodes(size_t nDepth)
{
    return DaeTestDocument("<library_visual_scenes><visual_scene>" + Repeat("<node>", nDepth) +
                           Repeat("</node>", nDepth) + "</visual_scene></library_visual_scenes>");
}

// The first float_array of a document.
daeDoubleArray* FindFloats(CDaeFile& rFile)
{
    daeElement* pArray = rFile.GetDocument()->getDomRoot()->getDescendant("float_array");
    return pArray ? reinterpret_cast<daeDoubleArray*>(pArray->getCharDataObject()->get(pArray)) : nullptr;
}

} // namespace

// What makes other readers crash, hang or read something else than is written.
TEST(CDaeFile, SoundOrRefusedWithItsPlace)
{
    const std::string strArray = "library_geometries[geometry id=g[mesh[source id=s[float_array";
    const std::string strBombs = "<!DOCTYPE COLLADA [<!ENTITY a \"" + Repeat("9 ", 50) + "\"><!ENTITY b \"" +
                                 Repeat("&a;", 50) + "\"><!ENTITY c \"" + Repeat("&b;", 50) +
                                 "\"><!ENTITY d \"" + Repeat("&c;", 50) + "\">]>";
    const struct
    {
        std::string strDocument;
        std::string strBegin; // of what is read, or of the error
    } arrCases[] = {
        // not XML at all, or no longer
        {"", "test.dae(1:0) - 3 - no element found"},
        {"hello", "test.dae(1:0) - 2 - syntax error"},
        {DaeTestDocument("<asset></scene>"), "test.dae(2:87) - 7 - mismatched tag"},
        {DaeTestDocument("<unknown>") + "<", "test.dae(2:89) - 7 - mismatched tag"},
        {DaeTestDocument("<asset/>") + "<a/>", "test.dae(2:96) - 9 - junk after document element"},
        {DaeTestDocument("<asset created=\"&nothing;\"/>"), "test.dae(2:78) - 11 - undefined entity"},
        {std::string("\x1f\x8b\x08\x00", 4), "test.dae(1:0) - The file is compressed with gzip"},
        {"PK\x03\x04rest", "test.dae(1:0) - The file is a ZIP archive"},
        // well formed, and nothing to use
        {"<mesh/>", "test.dae(1:0) - The root element is <mesh>, not <COLLADA>"},
        {"<node><node/></node>", "test.dae(1:0) - The root element is <node>, not <COLLADA>"},
        {"<x:COLLADA xmlns:x=\"http://x.org/\"/>",
         "test.dae(1:0) - The root element is <x:COLLADA>, not <COLLADA>"},
        {MeshWith("<float_array id=\"a\">1 2,5 3</float_array>"),
         "test.dae(2:156) - \"2,5\" in <float_array id=\"a\"> is not a number"},
        {MeshWith("<float_array count=\"x\">1</float_array>"),
         "test.dae(2:136) - \"x\" for count of <float_array> in <source id=\"s\"> is not a whole number in "
         "range"},
        {NestedNodes(16384), "test.dae(2:98401) - Elements are nested deeper than 16384"},
        // nested where nothing may be
        {MeshWith("<float_array>1<float_array>2</float_array>3</float_array>"), strArray + "(13)"},
        {DaeTestDocument("<library_nodes><library_nodes/></library_nodes>"), "library_nodes"},
        // text in pieces
        {MeshWith("<float_array><![CDATA[1 2]]> 3</float_array>"), strArray + "(1 2 3)"},
        {MeshWith("<float_array>1 2<!-- and --> 3 4</float_array>"), strArray + "(1 2 3 4)"},
        {MeshWith("<float_array>1 2<?and?>5 3&#32;4</float_array>"), strArray + "(1 25 3 4)"},
        {MeshWith("<float_array>+1 -INF 2.5E1</float_array>"), strArray + "(1 -INF 25)"},
        {MeshWith("<Name_array>a<!-- --> b</Name_array>"),
         "library_geometries[geometry id=g[mesh[source id=s[Name_array(a b)"},
        // entities
        {strBombs + MeshWith("<float_array>&d;</float_array>").substr(22), "test.dae(1:776) - 43 - "},
        {strBombs + MeshWith("<float_array name=\"&d;\"/>").substr(22), "test.dae(1:763) - 43 - "},
        {"<!DOCTYPE COLLADA [<!ENTITY two \"2 2\">]>" +
             MeshWith("<float_array>1 &two; 3</float_array>").substr(22),
         strArray + "(1 2 2 3)"},
        {"<!DOCTYPE COLLADA SYSTEM \"collada.dtd\">" +
             MeshWith("<float_array>1 &two; 3</float_array>").substr(22),
         "test.dae(1:190) - Entity &two; is not defined"},
    };
    CLogCapture objLog;
    for (const auto& rCase : arrCases)
    {
        const std::string strRead = DaeTestLoad(rCase.strDocument);
        EXPECT_EQ(strRead.substr(0, rCase.strBegin.size()), rCase.strBegin)
            << rCase.strDocument.substr(0, 300);
    }
}

TEST(CDaeFile, TellsNotWellFormedFromUnusable)
{
    CLogCapture objLog;
    const struct
    {
        std::string strDocument;
        bool bWellFormed;
        int nError;
    } arrCases[] = {
        {DaeTestDocument(""), true, DAE_OK},
        {"<mesh/>", true, DAE_ERR_BACKEND_VALIDATION},
        {"<mesh>", false, DAE_ERR_BACKEND_IO},
        {MeshWith("<float_array>x</float_array>"), true, DAE_ERR_BACKEND_VALIDATION},
        {"<!DOCTYPE COLLADA [<!ENTITY e \"" + Repeat("9 ", 150000) + "\">]>" +
             MeshWith("<float_array>" + Repeat("&e;", 40) + "</float_array>").substr(22),
         true, DAE_ERR_BACKEND_VALIDATION},
        // the rest of the file is looked at all the same
        {MeshWith("<float_array>x</float_array><wrong></wrang>"), false, DAE_ERR_BACKEND_IO},
        {MeshWith("<float_array>" + Repeat("x ", 2000) + "\x01</float_array>"), false, DAE_ERR_BACKEND_IO},
        {DaeTestDocument("<!--" + Repeat("0123456789abcdef", 1 << 21) + "-->"), false, DAE_ERR_BACKEND_IO}};
    for (const auto& rCase : arrCases)
    {
        CDaeFile objFile;
        EXPECT_EQ(objFile.OpenMemory("test.dae", rCase.strDocument), rCase.nError == DAE_OK);
        EXPECT_EQ(objFile.IsWellFormed(), rCase.bWellFormed) << objFile.GetErrorText();
        EXPECT_EQ(objFile.GetErrorNumber(), rCase.nError) << objFile.GetErrorText();
        EXPECT_EQ(objFile.GetErrorText().empty(), rCase.nError == DAE_OK);
        EXPECT_EQ(objFile.GetDAE().getDocCount(), rCase.nError == DAE_OK ? 1 : 0);
    }
}

TEST(CDaeFile, VersionsAndNamespaces)
{
    const std::string strImages =
        "<library_images><image id=\"i\"><init_from>a.png</init_from></image></library_images>";
    const std::string strExpected = "library_images[image id=i[init_from(a.png)]]";
    const std::pair<std::string, std::string> arrCases[] = {
        {"<COLLADA>" + strImages + "</COLLADA>", strExpected},
        {"<COLLADA xmlns=\"http://other.org/\">" + strImages + "</COLLADA>", strExpected},
        {"<COLLADA xmlns=\"http://www.collada.org/2008/03/COLLADASchema\" "
         "version=\"1.5.0\"><library_images><image "
         "id=\"i\"><init_from>\n <ref>\n "
         "a.png</ref><hex>00</hex></init_from></image></library_images></COLLADA>",
         strExpected},
        // samplers of 1.5 name their image, and no surface
        {"<COLLADA xmlns=\"http://www.collada.org/2008/03/COLLADASchema\"><library_effects><effect><newparam>"
         "<sampler2D><instance_image url=\"#a%20b\"><extra/></instance_image><mip_max_level>3</mip_max_level>"
         "<mip_bias>.5</mip_bias></sampler2D></newparam></effect></library_effects></COLLADA>",
         "library_effects[effect[newparam[sampler2D[source(a b) mipmap_maxlevel(3) mipmap_bias(0.5)]]]]"},
        {"<c:COLLADA xmlns:c=\"http://www.collada.org/2005/11/COLLADASchema\"><c:library_images><c:image "
         "id=\"i\"><c:init_from>a.png</c:init_from></c:image></c:library_images></c:COLLADA>",
         strExpected},
        {"<COLLADA xmlns:m=\"http://m.org/\"><m:asset/><library_images><m:image/><image id=\"i\" "
         "m:k=\"1\"><init_from>a.png</init_from></image></library_images></COLLADA>",
         strExpected},
        {"<COLLADA><library_images xmlns=\"http://x.org/\"/>" + strImages + "</COLLADA>", strExpected},
        // a technique takes everything: what the schema knows as such, the rest as it is written
        {"<COLLADA><library_images><extra><technique profile=\"P\" xmlns=\"http://p.org/\" "
         "xmlns:q=\"http://q.org/\"><a "
         "b=\"c\">1 2<d/></a><q:e/></technique></extra></library_images></COLLADA>",
         "library_images[extra[technique xmlns=http://p.org/ profile=P[a b=c(1 2)[d] q:e]]]"},
        {"<COLLADA><library_images><extra><technique profile=\"P\"><float_array>1 "
         "bad</float_array><list/></technique></extra>" +
             strImages.substr(16) + "</COLLADA>",
         // by the schema the images come before the extra
         "library_images[image id=i[init_from(a.png)] extra[technique profile=P[float_array list]]]"},
    };
    CLogCapture objLog;
    for (const auto& [strDocument, strRead] : arrCases)
    {
        EXPECT_EQ(DaeTestLoad(strDocument), strRead) << strDocument;
    }
    for (const char* szLine :
         {"Left out unknown element <m:image> in <library_images>",
          "Left out unknown element <hex> in <init_from>", "\"bad\" in <float_array> is not a number",
          "\"1.5.0\" in <COLLADA> is not one of the allowed values"})
    {
        EXPECT_TRUE(objLog.Contains(szLine)) << szLine;
    }
}

TEST(CDaeFile, Encodings)
{
    const struct
    {
        std::string strEncoding;
        std::string strBytes;
        std::string strName; // in UTF-8
    } arrCases[] = {{"utf-8", "W\xc3\xbcrfel", "W\xc3\xbcrfel"},
                    {"ISO-8859-1", "W\xfcrfel", "W\xc3\xbcrfel"},
                    {"windows-1252", "\x80 \x99", "\xe2\x82\xac \xe2\x84\xa2"}};
    CLogCapture objLog;
    for (const auto& rCase : arrCases)
    {
        EXPECT_EQ(DaeTestLoad("<?xml version=\"1.0\" encoding=\"" + rCase.strEncoding +
                              "\"?><COLLADA><library_nodes name=\"" + rCase.strBytes + "\"/></COLLADA>"),
                  "library_nodes name=" + rCase.strName);
    }
    std::string strWide("\xff\xfe", 2);
    for (char c : MeshWith("<float_array>" + Repeat("1 2 ", 100000) + "</float_array>").substr(22))
    {
        strWide += {c, '\0'};
    }
    CDaeFile objFile;
    ASSERT_TRUE(objFile.OpenMemory("wide.dae", strWide));
    EXPECT_EQ(FindFloats(objFile)->getCount(), 200000u);
}

// Text of large arrays takes another way than all else: values, and the places of faults after them, must not
// show it.
TEST(CDaeFile, LargeArraysAndThePlacesAfterThem)
{
    const std::string strLine = Repeat("0.5 -1.25 ", 30);
    for (const std::string& rEnd :
         {std::string("\n"), std::string("\r\n"), std::string("\r"), std::string(" ")})
    {
        const std::string strHead =
            MeshWith("<!-- > " + strLine + Repeat("1 ", 1000) + "--><float_array>").substr(0, 22) +
            "<COLLADA><library_geometries><geometry><mesh><source id=\"s\"><!-- > " + Repeat("1 ", 1000) +
            "--><float_array>";
        const std::string strTail =
            "7</float_array></source></mesh></geometry></library_geometries></COLLADA>";
        const std::string strNumbers = Repeat(strLine + rEnd, 2000); // several buffers
        CDaeFile objFile;
        ASSERT_TRUE(objFile.OpenMemory("test.dae", strHead + strNumbers + strTail)) << objFile.GetErrorText();
        const daeDoubleArray& rValues = *FindFloats(objFile);
        ASSERT_EQ(rValues.getCount(), 120001u);
        for (size_t n = 0; n < 120000; ++n)
        {
            ASSERT_EQ(rValues[n], n % 2 == 0 ? 0.5 : -1.25) << n;
        }
        EXPECT_EQ(rValues[120000], 7);

        CLogCapture objLog;
        CDaeFile objBroken;
        EXPECT_FALSE(objBroken.OpenMemory("test.dae", strHead + strNumbers + "7</flout>"));
        const std::string strPlace =
            rEnd == " " ? "2:" + std::to_string(strHead.size() - 22 + strNumbers.size() + 3) : "2002:3";
        EXPECT_EQ(objBroken.GetErrorText(), "test.dae(" + strPlace + ") - 7 - mismatched tag");
    }
}

TEST(CDaeFile, DeepTreesOnASmallStack)
{
    CLogCapture objLog;
    pthread_attr_t objAttributes;
    pthread_attr_init(&objAttributes);
    pthread_attr_setstacksize(&objAttributes, 512 << 10);
    pthread_t hThread{};
    const auto Load = [](void*) -> void* {
        for (size_t nDepth : {size_t{10000}, size_t{16380}, size_t{100000}})
        {
            CDaeFile objFile;
            EXPECT_EQ(objFile.OpenMemory("deep.dae", NestedNodes(nDepth)), nDepth <= 16380) << nDepth;
            CDaeFile objExtra;
            EXPECT_EQ(objExtra.OpenMemory("deep.dae",
                                          DaeTestDocument("<library_nodes><extra><technique profile=\"p\">" +
                                                          Repeat("<x>", nDepth) + Repeat("</x>", nDepth) +
                                                          "</technique></extra></library_nodes>")),
                      nDepth <= 16380);
        }
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&hThread, &objAttributes, Load, nullptr), 0);
    pthread_join(hThread, nullptr);
    pthread_attr_destroy(&objAttributes);
}

// In each of these a reader that searches or shifts siblings takes minutes.
TEST(CDaeFile, ManySiblings)
{
    CLogCapture objLog;
    const size_t nCount = 100000;
    const std::string strPolygons = "<library_geometries><geometry><mesh><polygons>" +
                                    Repeat("<p>0 1 2</p>", nCount) +
                                    "</polygons></mesh></geometry></library_geometries>";
    const std::string strMixed = "<library_animations><animation>" +
                                 Repeat("<animation/><sampler/>", nCount / 2) +
                                 "</animation></library_animations>";
    const std::string strSettings = "<library_effects><effect><profile_GLSL><technique sid=\"t\"><pass>" +
                                    Repeat("<depth_test_enable/>", nCount / 4) +
                                    "</pass></technique></profile_GLSL></effect></library_effects>";
    for (const std::string& rContent : {strPolygons, strMixed, strSettings})
    {
        CDaeFile objFile;
        EXPECT_TRUE(objFile.OpenMemory("many.dae", DaeTestDocument(rContent)));
    }
    CDaeFile objCrowded;
    EXPECT_FALSE(objCrowded.OpenMemory(
        "many.dae", DaeTestDocument("<library_nodes>" + Repeat("<node/>", 1 << 17) + "</library_nodes>")));
    EXPECT_NE(objCrowded.GetErrorText().find("Too many elements"), std::string::npos);
}

TEST(CDaeFile, OddNamesInExtraData)
{
    CLogCapture objLog;
    const std::string strAttributes = [] {
        std::string strResult;
        for (int n = 0; n < 1000; ++n)
        {
            strResult += " a" + std::to_string(n) + "=\"\"";
        }
        return strResult;
    }();
    CDaeFile objFile;
    ASSERT_TRUE(objFile.OpenMemory(
        "odd.dae", DaeTestDocument("<library_nodes><extra><technique profile=\"p\"><" +
                                   std::string(127, 'n') + "/><" + std::string(128, 'n') + "/><x" +
                                   strAttributes + "/></technique></extra></library_nodes>")));
    const daeElementRefArray arrChildren =
        objFile.GetDocument()->getDomRoot()->getDescendant("technique")->getChildren();
    ASSERT_EQ(arrChildren.getCount(), 2u);
    EXPECT_EQ(arrChildren[0]->getElementName(), std::string(127, 'n'));
    EXPECT_EQ(arrChildren[1]->getAttributeCount(), 256u);
}

TEST(CDaeFile, FilesOfAnyName)
{
    const std::string strDocument = DaeTestDocument(
        "<library_images><image id=\"i\"><init_from>tex/a b.png</init_from></image></library_images>"
        "<library_materials><material><instance_effect url=\"#e\"/></material></library_materials>"
        "<library_effects><effect id=\"e\"/></library_effects>");
    CLogCapture objLog;
    for (const char* szName : {"plain.dae", "with space.dae", "50%.dae", "a%20b.dae", "#1.dae", "what?.dae",
                               "W\xc3\xbcrfel.dae", "back\\slash.dae", "[x].dae", "a:b.dae"})
    {
        const CTempFile objTemp(szName, strDocument);
        const std::string strPath = objTemp.GetName();
        for (const std::string& rName :
             {strPath, std::filesystem::relative(strPath).string(), MakeDaeDocumentURI(strPath)})
        {
            CDaeFile objFile;
            ASSERT_TRUE(objFile.Open(rName)) << objFile.GetErrorText();
            daeElement& rRoot = *objFile.GetDocument()->getDomRoot();
            EXPECT_EQ(objFile.GetDAE().getRoot(objFile.GetURI()), &rRoot);
            // references inside the document and beside it
            daeElement* pInstance = rRoot.getDescendant("instance_effect");
            EXPECT_EQ(reinterpret_cast<daeURI*>(pInstance->getAttributeValue("url"))->getElement().cast(),
                      rRoot.getDescendant("effect"));
            daeElement* pImage = rRoot.getDescendant("init_from");
            const std::string strImage =
                reinterpret_cast<daeURI*>(pImage->getCharDataObject()->get(pImage))->str();
            EXPECT_EQ(strImage, objFile.GetURI().substr(0, objFile.GetURI().rfind('/')) + "/tex/a%20b.png");
        }
    }
    const CTempFile objNone("none.dae");
    const std::pair<std::string, std::string> arrRefused[] = {
        {objNone.GetName(), ""},
        {std::filesystem::path(objNone.GetName()).parent_path().string(), ": it is not a regular file"},
        {"http://localhost/a.dae", ": only local files are read"},
        {"file://server/a.dae", ": only local files are read"},
    };
    for (const auto& [strName, strReason] : arrRefused)
    {
        CDaeFile objFile;
        EXPECT_FALSE(objFile.Open(strName));
        EXPECT_FALSE(objFile.IsWellFormed());
        EXPECT_EQ(objFile.GetErrorText(), "Failed to open file " + strName + strReason);
    }
}
