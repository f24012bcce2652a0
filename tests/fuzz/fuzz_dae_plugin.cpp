// Mutations of a COLLADA document through the reader, in memory.
//
//     fuzz_dae_plugin [FILE [MUTATIONS [RANDOM-SEED]]]
//
// Reads the document (a small one of its own when FILE is missing or empty) cut off at every byte, then
// mutated at random as often as asked (10000 times). Each time the reader must agree with Expat alone on
// whether, and where, the text is not XML, and what it loads must be there to walk. Most telling under the
// sanitizers.
#include "MutateXml.h"

#include "daedom/CDaeDatabase_Ids.h"
#include "daedom/CDaeIOPlugin_Expat.h"
#include "daedom/CDaeUri.h"

#include <dae.h>
#include <dae/daeDocument.h>
#include <dae/daeErrorHandler.h>
#include <expat.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace
{

constexpr std::string_view NAME = "fuzz.dae";

class CQuietErrors : public daeErrorHandler
{
  public:
    void handleError(daeString) override {}
    void handleWarning(daeString) override {}
};

std::string MakeDocument()
{
    std::string strNumbers;
    for (int n = 0; n < 240; ++n)
    {
        strNumbers += std::to_string(n * 0.37) + (n % 12 == 11 ? "\n" : " ");
    }
    return R"(<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE COLLADA [<!ENTITY e "1 2"><!ENTITY f "&e; &e;">]>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" xmlns:x="http://x.org/" version="1.4.1">
<asset><created>2020-01-01T00:00:00Z</created><unit name="inch" meter="0.0254"/><up_axis>Z_UP</up_axis></asset>
<library_images><image id="i"><init_from>a%20b.png<ref>c.png</ref></init_from></image></library_images>
<library_effects><effect id="e"><profile_COMMON><newparam sid="s"><surface type="2D"><init_from>i</init_from></surface>
</newparam><technique sid="t"><phong><diffuse><color>1 0.5 .25 1</color></diffuse></phong></technique></profile_COMMON>
</effect></library_effects>
<library_geometries><geometry id="g"><mesh><source id="p"><float_array id="a" count="240">)" +
           strNumbers + R"(</float_array><technique_common><accessor source="#a" count="80" stride="3">
<param name="X" type="float"/></accessor></technique_common></source><source id="j"><Name_array>one two</Name_array></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="1"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1<!-- 5 --> &f; <![CDATA[2]]></p></triangles>
<extra><technique profile="X" xmlns="http://y.org/"><x:a b="c">text<d/></x:a><mesh/></technique></extra></mesh></geometry>
</library_geometries>
<library_visual_scenes><visual_scene id="s"><node id="n" name="a b"><rotate sid="r">0 0 1 90</rotate><node/>
<instance_geometry url="#g"/></node></visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#s"/></scene></COLLADA>
)";
}

// The reader's message on a document that is not XML; nothing for one that is.
std::string ParseAlone(const std::string& rDocument)
{
    XML_Parser pParser = XML_ParserCreate(nullptr);
    std::string strError;
    if (XML_Parse(pParser, rDocument.data(), static_cast<int>(rDocument.size()), XML_TRUE) != XML_STATUS_OK)
    {
        strError = std::string(NAME) + "(" + std::to_string(XML_GetCurrentLineNumber(pParser)) + ":" +
                   std::to_string(XML_GetCurrentColumnNumber(pParser)) + ") - " +
                   std::to_string(static_cast<int>(XML_GetErrorCode(pParser))) + " - " +
                   XML_ErrorString(XML_GetErrorCode(pParser));
    }
    XML_ParserFree(pParser);
    return strError;
}

size_t Walk(daeElement& rElement)
{
    size_t nBytes = rElement.getCharData().size();
    for (size_t n = 0; n < rElement.getAttributeCount(); ++n)
    {
        nBytes += rElement.getAttribute(n).size();
    }
    const daeElementRefArray arrChildren = rElement.getChildren();
    for (size_t n = 0; n < arrChildren.getCount(); ++n)
    {
        nBytes += Walk(*arrChildren[n]);
    }
    return nBytes;
}

// Making a DAE takes longer than reading a small document, so one reads many.
struct CReader
{
    CDaeIOPlugin_Expat objPlugin;
    DAE objDAE{nullptr, &objPlugin, "1.4.1"};
    CDaeDatabase_Ids objDatabase{objDAE};
    size_t nRead = 0;
    size_t nLoaded = 0; // by those before, too

    CReader() { objDAE.setDatabase(&objDatabase); }
};

void Check(std::unique_ptr<CReader>& rspReader, const std::string& rDocument)
{
    if (!rspReader || rspReader->nRead == 1000)
    {
        const size_t nLoaded = rspReader ? rspReader->nLoaded : 0;
        rspReader.reset();
        rspReader = std::make_unique<CReader>();
        rspReader->nLoaded = nLoaded;
    }
    ++rspReader->nRead;
    CDaeIOPlugin_Expat& rPlugin = rspReader->objPlugin;
    rspReader->objDatabase.clear();
    rPlugin.SetSource(std::string(NAME), rDocument);
    const bool bLoaded = rspReader->objDAE.open(MakeDaeDocumentURI(std::string(NAME))) != nullptr;
    const std::string strExpected = ParseAlone(rDocument);
    const std::string& rError = rPlugin.GetErrorText();
    bool bRight = bLoaded == rError.empty() && bLoaded == (rPlugin.GetDocument() != nullptr);
    if (strExpected.empty())
    {
        bRight = bRight && rPlugin.IsWellFormed();
    }
    else
    {
        bRight = bRight && !rPlugin.IsWellFormed() && rError == strExpected;
    }
    if (bLoaded)
    {
        ++rspReader->nLoaded;
        Walk(*rPlugin.GetDocument()->getDomRoot());
    }
    if (!bRight)
    {
        std::ofstream("fuzz_dae_plugin.failed.dae", std::ios::binary) << rDocument;
        std::printf("the reader says \"%s\", Expat \"%s\"; see fuzz_dae_plugin.failed.dae\n", rError.c_str(),
                    strExpected.c_str());
        std::exit(1);
    }
}

} // namespace

int main(int nArguments, char** ppArguments)
{
    CQuietErrors objErrors;
    daeErrorHandler::setErrorHandler(&objErrors);
    std::string strDocument = MakeDocument();
    if (nArguments > 1 && *ppArguments[1])
    {
        std::ifstream objFile(ppArguments[1], std::ios::binary);
        strDocument.assign(std::istreambuf_iterator<char>(objFile), {});
    }
    const long nMutations = nArguments > 2 ? std::atol(ppArguments[2]) : 10000;
    std::mt19937 objRandom(nArguments > 3 ? static_cast<unsigned>(std::atol(ppArguments[3])) : 1u);

    std::unique_ptr<CReader> spReader;
    Check(spReader, strDocument);
    const size_t nStep = strDocument.size() / 10000 + 1; // large files only now and then
    for (size_t n = 0; n < strDocument.size(); n += nStep)
    {
        Check(spReader, strDocument.substr(0, n));
    }
    for (long n = 0; n < nMutations; ++n)
    {
        Check(spReader, MutateXml(strDocument, objRandom));
    }
    std::printf("%zu truncations, %ld mutations: %zu loaded\n", strDocument.size() / nStep, nMutations,
                spReader->nLoaded);
    return 0;
}
