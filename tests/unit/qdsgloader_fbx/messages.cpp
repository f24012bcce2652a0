// What users read about their files: the lines of the log in their order, with levels and functions.
#include "qdscenegraph/node/CSGData_RenderState.h"
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"
#include "support/FBXTestText.h"

#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

using CLines = std::vector<std::string>;

// Everything that the loader logs, "7 CSGLoaderFBXImpl::LoadFBXFile: Started loading 'a.fbx'"; '@' is the
// file's folder.
class CFunctionLog : public CLogOutput
{
  public:
    explicit CFunctionLog(const CTempFile& rFile)
        : CLogOutput(CLogFormat_Std(0, 0, 0, 4, true)), // functions alone
          m_strFolder(std::filesystem::path(rFile.GetName()).parent_path().string() + "/")
    {
        CLogger::CreateInstance();
        CLogger::GetInstance()->AddOutput(this);
        QD_FBX.SetThreshold(LOG_DETAIL);
    }
    ~CFunctionLog() override
    {
        QD_FBX.SetThreshold(CLogSource::DEFAULT_THRESHOLD);
        CLogger::GetInstance()->RemoveOutput(this);
    }
    void WriteLine(std::string_view strLine, int nLevel) override
    {
        std::string strText =
            std::to_string(nLevel) + std::string(strLine.substr(strLine.find(' '), strLine.find('\n')));
        strText.pop_back();
        strText.replace(strText.find("   "), 3, ": ");
        for (size_t n; (n = strText.find(m_strFolder)) != std::string::npos;)
        {
            strText.replace(n, m_strFolder.size(), "@");
        }
        m_vecLines.push_back(strText);
    }
    // The lines since the last time, but for those that say what is in the file.
    CLines Take()
    {
        std::erase_if(m_vecLines, [](const std::string& r) {
            return r.find(" LogNode: ") != std::string::npos || r.find(" LogVector: ") != std::string::npos ||
                   r.find(" LogTransform: ") != std::string::npos;
        });
        return std::exchange(m_vecLines, {});
    }

  private:
    std::string m_strFolder;
    CLines m_vecLines;
};

boost::intrusive_ptr<CSGLoaderFBXImpl> CreateLoader(bool bKeepQuaternions = false)
{
    CQDSGLoaderFBXLib::InitLibrary();
    return new CSGLoaderFBXImpl(CSGTextureLoader::CreateStandardLoader(), bKeepQuaternions, false);
}

// A quad and an edge.
const std::string SHAPE = "Vertices: *12 { a: 0,0,0,1,0,0,1,1,0,0,1,0 }\nPolygonVertexIndex: *6 { a: "
                          "0,1,2,-4,0,-2 }\n";
const std::string NORMALS = "LayerElementNormal: 0 {\nMappingInformationType: \"AllSame\"\n"
                            "ReferenceInformationType: \"Direct\"\nNormals: *3 { a: 0,0,1 }\n}\n";
const std::string UVS = "LayerElementUV: 0 {\nMappingInformationType: \"ByVertice\"\n"
                        "ReferenceInformationType: \"Direct\"\nUV: *8 { a: 0,0,1,0,1,1,0,1 }\n}\n";
const std::string SURFACE = "NurbsSurfaceOrder: 2,2\nDimensions: 2,2\nStep: 1,1\nForm: \"Open\",\"Open\"\n"
                            "Points: 0,0,0,1, 1,0,0,1, 0,1,0,1, 1,1,0,1\n"
                            "KnotVectorU: 0,0,1,1\nKnotVectorV: 0,0,1,1\n";

} // namespace

TEST(FBXMessages, OfASceneGraph)
{
    const std::string strObjects =
        Object("Model", 1, "quad", "Mesh", Properties({"RotationActive 1", "RotationOrder 99"})) +
        Object("Geometry", 2, "g", "Mesh", SHAPE + NORMALS + UVS) +
        Object("Model", 3, "surface", "NurbsSurface",
               Properties({"vantor_doublesided \"true\"", "vantor_alphablend 1", "vantor_mipmapbias -1.5",
                           "vantor_depthbias 0.25", "vantor_donotcull 0", "price 7"},
                          "A+U")) +
        Object("Geometry", 4, "s", "NurbsSurface", SURFACE) + Object("Model", 5, "levels", "LodGroup") +
        Object("NodeAttribute", 6, "", "LodGroup") + Object("Material", 7, "m") +
        Object("Texture", 8, "t", "", "FileName: \"none.png\"\n");
    const CTempFile objFile("a.fbx",
                            MakeFBXFile(strObjects, Connect({"1,0", "2,1", "3,0", "4,3", "5,0", "6,5", "7,1",
                                                             "7,3", "8,7,NormalMap"})));
    for (const bool bKeepQuaternions : {false, true})
    {
        CFunctionLog objLog(objFile);
        const auto spLoader = CreateLoader(bKeepQuaternions);
        EXPECT_TRUE(spLoader->LoadFile(objFile.GetName()));
        EXPECT_EQ(
            objLog.Take(),
            (CLines{"7 CSGLoaderFBXImpl::LoadFBXFile: Started loading '@a.fbx'",
                    "7 CSGLoaderFBXImpl::LoadScene: FBX version number for this FBX SDK is 7.7.0",
                    "7 CSGLoaderFBXImpl::LoadScene: FBX version number for file @a.fbx is 7.4.0",
                    "7 CSGLoaderFBXImpl::LoadScene: Animation Stack Information",
                    "7 CSGLoaderFBXImpl::LoadScene:     Number of Animation Stacks: 0",
                    "7 CSGLoaderFBXImpl::LoadScene:     Current Animation Stack: \"\"",
                    "15 CFBXSceneDump::Log: Hierarchy and materials:", "15 CFBXSceneDump::Log: Transforms:",
                    "7 CSGLoaderFBXImpl::LoadFBXFile: Finished loading '@a.fbx'"}));
        EXPECT_TRUE(spLoader->LoadSceneGraph());
        const std::string strAttributes = "7 CFBXExtraAttributes::CheckFBXObjectForExtraAttributes: ";
        EXPECT_EQ(
            objLog.Take(),
            (CLines{"7 CSGLoaderFBXImpl::LoadSceneGraph: Loading SG from fbx scene.",
                    "7 CSGLoaderFBXImpl::PreprocessFBXMesh: Generated tangent data to support NormalMap",
                    "4 CSGLoaderFBXImpl::PreprocessFBXMesh: Invalid polygon size 2",
                    "7 CSGLoaderFBXImpl::PreprocessFBXMesh: Found polygon size 4. Triangulating and "
                    "recursing.",
                    "1 CFBXImages::FindFile: Did not find 'none.png' or '@none.png'",
                    "7 CSGLoaderFBXImpl::PreprocessFBXHierarchy: Converting nurbs surface to nurb for node "
                    "'surface'",
                    "7 CSGLoaderFBXImpl::PreprocessFBXHierarchy: Triangulating nurb for node 'surface'",
                    "15 CFBXMaterials::PreprocessFBXMaterial: Material 'm' already in cache.",
                    "4 CSGLoaderFBXImpl::PreprocessFBXHierarchy: Unexpected attribute type '18'",
                    "4 CSGLoaderFBXImpl::PreprocessFBXHierarchy: It is at node 'levels', which stays without "
                    "it",
                    "15 CSGLoaderFBXImpl::ConvertNode: Creating node 'RootNode'",
                    "15 CSGLoaderFBXImpl::ConvertNode: Creating node 'quad'",
                    "1 CFBXLocalTransform::Append" + std::string(bKeepQuaternions ? "Quat" : "") +
                        "Rotation" + (bKeepQuaternions ? "Transform" : "Transforms") +
                        ": Unknown rotation order 99",
                    "15 CSGLoaderFBXImpl::ConvertNode: Creating node 'surface'",
                    "15 CSGLoaderFBXImpl::ConvertNode: Creating node 'levels'",
                    strAttributes + "Found vantor_doublesided = 'true'",
                    strAttributes + "Found vantor_alphablend = 1",
                    strAttributes + "Found vantor_mipmapbias = -1.5",
                    strAttributes + "Found vantor_depthbias = 0.25",
                    strAttributes + "Found vantor_donotcull = 'false'",
                    strAttributes + "Ignoring unrecognized user property 'price'",
                    "7 CSGLoaderFBXImpl::LoadSceneGraph: Finished loading SG from fbx scene."}));
    }
}

TEST(FBXMessages, OfFilesThatAreRefused)
{
    const struct
    {
        const char* m_szName;
        std::string m_strContent;
        CLines m_vecExpected;
    } CASES[] = {
        {"a.FBX", "", {"1 CSGLoaderFBXImpl::LoadFile: Unrecognized extension for file '@a.FBX'"}},
        {"a.fbx",
         "\x7F",
         {"7 CSGLoaderFBXImpl::LoadFBXFile: Started loading '@a.fbx'",
          "1 CSGLoaderFBXImpl::LoadScene: Call to FbxImporter::Initialize() failed.",
          "1 CSGLoaderFBXImpl::LoadScene: Error returned: @a.fbx: this is not an FBX file, neither a binary "
          "nor an ASCII one"}},
        {"a.fbx",
         FBXHeader(6100, "EncryptionType: 1\n"),
         {"7 CSGLoaderFBXImpl::LoadFBXFile: Started loading '@a.fbx'",
          "7 CSGLoaderFBXImpl::LoadScene: FBX version number for this FBX SDK is 7.7.0",
          "7 CSGLoaderFBXImpl::LoadScene: FBX version number for file @a.fbx is 6.1.0",
          "7 CSGLoaderFBXImpl::LoadScene: Animation Stack Information",
          "7 CSGLoaderFBXImpl::LoadScene:     Number of Animation Stacks: 0",
          "7 CSGLoaderFBXImpl::LoadScene:     Current Animation Stack: \"\"",
          "1 CSGLoaderFBXImpl::LoadScene: Password required.  Input of same not implemented"}},
    };
    for (const auto& rCase : CASES)
    {
        const CTempFile objFile(rCase.m_szName, rCase.m_strContent);
        CFunctionLog objLog(objFile);
        const auto spLoader = CreateLoader();
        EXPECT_FALSE(spLoader->LoadFile(objFile.GetName()));
        EXPECT_EQ(objLog.Take(), rCase.m_vecExpected);
        EXPECT_FALSE(spLoader->LoadSceneGraph());
        EXPECT_EQ(spLoader->LoadUpAxis(), UP_AXIS_Z);
        EXPECT_EQ(objLog.Take(), (CLines{"1 CSGLoaderFBXImpl::LoadSceneGraph: Tried to load scene graph when "
                                         "no file was loaded.",
                                         "1 CSGLoaderFBXImpl::LoadUpAxis: Defaulting to Up axis Z"}));
    }
}

TEST(FBXMessages, OfUpAxes)
{
    const struct
    {
        CValues m_vecSettings;
        EUpAxis m_eExpected;
        CLines m_vecExpected; // behind the function
    } CASES[] = {
        {{"UpAxis 0", "CoordAxis 1"}, UP_AXIS_X, {"7 Up axis is X, sign = 1"}},
        {{}, UP_AXIS_Y, {"7 Up axis is Y, sign = 1"}},
        {{"UpAxis 2", "FrontAxis 1", "FrontAxisSign -1"}, UP_AXIS_Z, {"7 Up axis is Z, sign = 1"}},
        {{"UpAxisSign -1"}, UP_AXIS_Z, {"7 Up axis is Y, sign = -1", "1 Assert 'nAxisSign > 0' failed"}},
    };
    for (const auto& rCase : CASES)
    {
        const CTempFile objFile(
            "a.fbx", MakeFBXFile("", "", "GlobalSettings: {\n" + Properties(rCase.m_vecSettings) + "}\n"));
        CFunctionLog objLog(objFile);
        const auto spLoader = CreateLoader();
        EXPECT_TRUE(spLoader->LoadFile(objFile.GetName()));
        objLog.Take();
        EXPECT_EQ(spLoader->LoadUpAxis(), rCase.m_eExpected);
        CLines vecExpected = rCase.m_vecExpected;
        for (std::string& rLine : vecExpected)
        {
            rLine.insert(1, " CSGLoaderFBXImpl::LoadUpAxis:");
        }
        EXPECT_EQ(objLog.Take(), vecExpected);
    }
}

// What is wrong with materials and normal maps leaves the mesh as it is; and a mesh that two nodes show has
// the materials of each.
TEST(FBXMessages, OfMeshesAndTheirMaterials)
{
    const CTempFile objFile(
        "a.fbx", MakeFBXFile(Object("Geometry", 1, "g", "Mesh",
                                    "Vertices: *9 { a: 0,0,0,1,0,0,1,1,0 }\nPolygonVertexIndex: *6 { a: "
                                    "0,1,-3,2,1,-1 }\nLayerElementMaterial: 0 {\nMappingInformationType: "
                                    "\"ByPolygon\"\nMaterials: *2 { a: 0,1 }\n}\n") +
                                 Object("Model", 2, "A", "Mesh") + Object("Model", 3, "B", "Mesh") +
                                 Object("Material", 4, "a") + Object("Material", 5, "b") +
                                 Object("Texture", 6, "t", "", "FileName: \"none.png\"\n"),
                             Connect({"2,0", "3,0", "1,2", "1,3", "4,2", "5,2", "5,3", "6,4,NormalMap"})));
    CLogCapture objLog;
    const auto spLoader = CreateLoader();
    const auto spRoot = spLoader->LoadFile(objFile.GetName()) ? spLoader->LoadSceneGraph() : nullptr;
    ASSERT_TRUE(spRoot);
    for (const char* szChild : {"A/a", "A/b", "B/b", "B/default"})
    {
        EXPECT_TRUE(spRoot->FindNodeByGlobalName(szChild)) << szChild;
    }
    EXPECT_TRUE(objLog.HasLine("1 Assert 'pMesh->GenerateTangentsData(nLayer)' failed"));
    EXPECT_TRUE(objLog.HasLine("4 1 polygons of node 'B' have a material that is not there."));
}

// A node has what the one above it has, unless it says otherwise.
TEST(FBXMessages, UserPropertiesCountForWhatIsBelow)
{
    const CTempFile objFile(
        "a.fbx",
        MakeFBXFile(Object("Model", 1, "above", "Null",
                           Properties({"vantor_doublesided \"true\"", "vantor_depthbias 0.25"}, "U")) +
                        Object("Model", 2, "below", "Null",
                               Properties({"vantor_doublesided \"false\"", "vantor_donotcull 1"}, "U")) +
                        Object("Model", 3, "beside", "Null", Properties({"vantor_donotcull 1"})),
                    Connect({"1,0", "2,1", "3,0"})));
    const auto spLoader = CreateLoader();
    const auto spRoot = spLoader->LoadFile(objFile.GetName()) ? spLoader->LoadSceneGraph() : nullptr;
    ASSERT_TRUE(spRoot);
    std::string strStates;
    for (const char* szNode : {"above", "below", "beside"})
    {
        const auto* pState = spRoot->FindNodeByGlobalName(szNode)->FindData<CSGData_RenderState>();
        strStates += pState == nullptr
                         ? "none"
                         : std::to_string(pState->HasFlag(CSGData_RenderState::FLAG_DOUBLE_SIDED)) +
                               std::to_string(pState->HasFlag(CSGData_RenderState::FLAG_DO_NOT_CULL)) + " " +
                               std::to_string(pState->GetDepthBias()) + ", ";
    }
    EXPECT_EQ(strStates, "10 0.250000, 01 0.250000, none");
}
