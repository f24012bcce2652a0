// The records of geometry byte for byte, what is refused, and what stays shared.

#include "GeomTestScene.h"

#include <bit>
#include <limits>

using namespace std::string_literals;

namespace
{

template <class T>
std::string Bytes(T value)
{
    return {reinterpret_cast<const char*>(&value), sizeof(value)};
}
std::string I(std::initializer_list<int32_t> arrValues)
{
    std::string strBytes;
    for (const int32_t nValue : arrValues)
    {
        strBytes += Bytes(nValue);
    }
    return strBytes;
}
std::string F(std::initializer_list<float> arrValues)
{
    std::string strBytes;
    for (const float fValue : arrValues)
    {
        strBytes += Bytes(fValue);
    }
    return strBytes;
}

constexpr uint64_t DATA = 0x71461D30E88B44F3;
constexpr uint64_t GEOM = 0x2E93C0EA7C9F0334;
constexpr uint64_t GEOMETRY = 0xCAACC261C2BE3E03;
constexpr uint64_t LIST = 0x92BFEE0287497AEE;
constexpr uint64_t BINDING = 0x6F182FE015A8FFF4;
constexpr uint64_t TRIANGLES = 0x5530EEEF77F97C19;
constexpr uint64_t QUADS = 0x6508053ED16BCC36;
constexpr uint64_t LINES = 0xCAFF0758BDE911E8;
constexpr uint64_t PRIM_LIST = 0xD0E15568950A4264;
constexpr uint64_t INDICES = 0x42310C45A40FA9AB;
constexpr uint64_t VERTICES = 0x3853C0EB565ED313;
constexpr uint64_t BOUNDS = 0x6A020078A9BB18A1;

using CRecords = std::vector<std::pair<uint64_t, std::string>>;

// A file with the records, the first of which is the one top-level object.
std::string MakeFile(const std::vector<uint64_t>& rTypes, const CRecords& rRecords)
{
    std::string strFile = "NEST" + I({2, static_cast<int32_t>(rTypes.size())});
    for (const uint64_t uiGUID : rTypes)
    {
        strFile += Bytes(uiGUID) + I({1});
    }
    strFile += I({1, 0, static_cast<int32_t>(rRecords.size())});
    for (const auto& [uiGUID, strBody] : rRecords)
    {
        strFile += Bytes(uiGUID) + strBody;
    }
    return strFile;
}

const std::string TWO_MEMBERS = I({2, 0, 0, 3, 2, 1, 2}); // position:3 texcoord1:2
const std::string THREE_VERTICES =
    TWO_MEMBERS + I({3}) + F({0, 1, 2, 0.5f, 0.25f, 3, 4, 5, 0, 0, 6, 7, 8, 1, 1});
const std::string ONE_TRIANGLE = I({2, 3}) + "\x02\0\x01\0\0\0"s;

boost::intrusive_ptr<CSGData_Geometry> MakeGeometry()
{
    CSGVertexFormat objFormat;
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3);
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_TEXCOORD, 1, 2);
    const CVertexBufferPtr spVertices = CSGVertexBuffer::Create(objFormat, 3);
    std::ranges::copy(std::array{0.f, 1.f, 2.f, .5f, .25f, 3.f, 4.f, 5.f, 0.f, 0.f, 6.f, 7.f, 8.f, 1.f, 1.f},
                      spVertices->EditData().begin());
    const auto spList = CSGGeomList::Create();
    spList->AddBinding(MakeTriangles({2, 1, 0}, spVertices));
    return CSGData_Geometry::Create(spList);
}

const std::vector<uint64_t> GEOMETRY_TYPES = {GEOMETRY,  DATA, LIST,    BINDING,
                                              TRIANGLES, GEOM, INDICES, VERTICES};
const CRecords GEOMETRY_RECORDS = {{GEOMETRY, I({1})},  {LIST, I({1, 2})},       {BINDING, I({3, 5})},
                                   {TRIANGLES, I({4})}, {INDICES, ONE_TRIANGLE}, {VERTICES, THREE_VERTICES}};

} // namespace

TEST(GeometryRecords, AreWrittenAsDocumented)
{
    EXPECT_EQ(Save(MakeGeometry().get()), MakeFile(GEOMETRY_TYPES, GEOMETRY_RECORDS));

    const std::string strWide = I({4, 4, 0, 65536, 7, 1});
    const std::vector<uint64_t> vecTypes = {QUADS, GEOM, INDICES};
    EXPECT_EQ(Save(CSGGeom_Quads::Create(MakeIndices({0, 65536, 7, 1})).get()),
              MakeFile(vecTypes, {{QUADS, I({1})}, {INDICES, strWide}}));
    EXPECT_EQ(Save(CSGGeom_Lines::Create(MakeIndices({0, 65536, 7, 1})).get()),
              MakeFile({LINES, GEOM, INDICES}, {{LINES, I({1})}, {INDICES, strWide}}));

    const auto spList = CSGGeom_PrimList::Create();
    spList->AddPrimitive(CSGPrim_Triangle::Create(std::vector<int32_t>{1, 2, 3}));
    spList->AddPrimitive(CSGPrim_Quad::Create(std::vector<int32_t>{4, 5, 6, 7}));
    spList->AddPrimitive(CSGPrim_Polygon::Create(std::vector<int32_t>{8, 9, 10}));
    EXPECT_EQ(
        Save(spList.get()),
        MakeFile({PRIM_LIST, GEOM}, {{PRIM_LIST, I({3, 0, 3, 1, 2, 3, 1, 4, 4, 5, 6, 7, 2, 3, 8, 9, 10})}}));

    const boost::intrusive_ptr<CSGData_GeomBounds> spBounds = CSGMem::Construct<CSGData_GeomBounds>();
    const float fInf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Save(spBounds.get()),
              MakeFile({BOUNDS, DATA}, {{BOUNDS, F({fInf, fInf, fInf, -fInf, -fInf, -fInf, 0, 0, 0, -1})}}));
}

TEST(GeometryRecords, AreReadBackToTheSameBytes)
{
    const std::string strFile = MakeFile(GEOMETRY_TYPES, GEOMETRY_RECORDS);
    const auto spLoaded = Load(strFile);
    ASSERT_TRUE(spLoaded);
    EXPECT_EQ(Save(spLoaded.get()), strFile);

    const std::string strPrims =
        MakeFile({PRIM_LIST, GEOM}, {{PRIM_LIST, I({2, 2, 5, 1, 2, 3, 4, 5, 0, 3, 6, 7, 8})}});
    const auto spPrims = Load(strPrims);
    ASSERT_TRUE(spPrims);
    EXPECT_EQ(Save(spPrims.get()), strPrims);
}

// Links run in both directions: here what is linked to stands first.
TEST(GeometryRecords, AreReadInAnyOrder)
{
    const CRecords vecRecords = {{VERTICES, THREE_VERTICES}, {INDICES, ONE_TRIANGLE}, {TRIANGLES, I({1})},
                                 {BINDING, I({2, 0})},       {LIST, I({1, 3})},       {GEOMETRY, I({4})}};
    EXPECT_TRUE(Load(MakeFile(GEOMETRY_TYPES, vecRecords)));
}

TEST(GeometryRecords, AreRefusedWithAReason)
{
    const float fNaN = std::numeric_limits<float>::quiet_NaN();
    const struct
    {
        const char* szCase;
        uint64_t uiGUID;
        std::string strBody; // in place of that type's good one
        const char* szReason;
    } arrCases[] = {
        {"no list", GEOMETRY, I({-1}), "m_spGeomList is NULL"},
        {"a list of another type", GEOMETRY, I({2}), "type CSGGeomBinding"},
        {"more bindings than bytes", LIST, I({0x10000000, 2}),
         "pStream->CanRead(nBindings, sizeof(int32_t)) is false"},
        {"a negative number of bindings", LIST, I({-1, 2}), "pStream->CanRead(nBindings"},
        {"a missing binding", LIST, I({1, -1}), "spBinding is NULL"},
        {"no geometry", BINDING, I({-1, 5}), "m_spGeom is NULL"},
        {"no vertex buffer", BINDING, I({3, -1}), "m_spVertexBuffer is NULL"},
        {"geometry and vertices swapped", BINDING, I({5, 3}), "type CSGGeom_Triangles"},
        {"no index buffer", TRIANGLES, I({-1}), "m_spIndexBuffer is NULL"},
        {"vertices for indices", TRIANGLES, I({5}), "type CSGVertexBuffer"},
        {"four indices", INDICES, I({2, 4}) + "\0\0\1\0\2\0\0\0"s,
         "The number of indices 4 of a CSGGeom_Triangles is not a multiple of 3."},
        {"an index too high", INDICES, I({2, 3}) + "\0\0\1\0\3\0"s,
         "A CSGGeom_Triangles has vertex index 3, but its vertex buffer has only 3 vertices."},
        {"a wide index too high", INDICES, I({4, 3, 0, 0x7FFFFFFF, 0}), "has vertex index 2147483647,"},
        {"an index above all", INDICES, I({4, 3, 0, -1, 0}), "Index 4294967295 is above 2147483647"},
        {"indices of 24 bits", INDICES, I({3, 3}) + std::string(9, '\0'), "nBytesEach == sizeof(uint16_t)"},
        {"more indices than bytes", INDICES, I({2, 0x7FFFFFFF}),
         "pStream->CanRead(nCount, nBytesEach) is false"},
        {"a negative number of indices", INDICES, I({2, -3}),
         "pStream->CanRead(nCount, nBytesEach) is false"},
        {"more members than bytes", VERTICES, I({0x10000000}),
         "pStream->CanRead(nMembers, MEMBER_SIZE) is false"},
        {"an unknown member", VERTICES, I({1, 4, 0, 3, 3}) + std::string(36, '\0'), "AddMemberN"},
        {"a member twice", VERTICES, I({2, 0, 0, 3, 0, 0, 3, 3}) + std::string(72, '\0'),
         "The vertex format position:3 already has position of set 0."},
        {"more vertices than bytes", VERTICES, TWO_MEMBERS + I({0x7FFFFFFF}),
         "pStream->CanRead(nVertices, nBytesEach)"},
        {"one vertex more than bytes", VERTICES, TWO_MEMBERS + I({2}) + std::string(39, '\0'),
         "nVertices, nBytesEach"},
        {"vertices of no size", VERTICES, I({0, 0x7FFFFFFF}), "nBytesEach > 0"},
        {"no vertex count", VERTICES, TWO_MEMBERS, "pStream->CanRead(1, sizeof(int32_t)) is false"},
        {"more primitives than bytes", PRIM_LIST, I({0x7FFFFFFF}),
         "CanRead(nPrimitives, SMALLEST_PRIMITIVE_RECORD)"},
        {"an unknown primitive", PRIM_LIST, I({1, 3, 3, 0, 1, 2}),
         "nKind >= 0 && nKind < NUM_KINDS is false"},
        {"a triangle of four", PRIM_LIST, I({1, 0, 4, 0, 1, 2, 3}), "nCorners >= nMinCorners"},
        {"a polygon of two", PRIM_LIST, I({1, 2, 2, 0, 1, 2}), "nCorners >= nMinCorners"},
        {"a polygon longer than the file", PRIM_LIST, I({1, 2, 0x7FFFFFFF, 0, 1, 2}), "CanRead(nIndices"},
        {"a primitive of a negative size", PRIM_LIST, I({1, 2, -3, 0, 1, 2}), "CanRead(nIndices"},
        {"a negative index", PRIM_LIST, I({1, 0, 3, 0, -1, 2}), "nIndex >= 0 is false"},
        {"bounds of not a number", BOUNDS, F({0, 0, 0, 1, fNaN, 1, 0, 0, 0, 1}), "HasNaN"},
        {"a radius of not a number", BOUNDS, F({0, 0, 0, 1, 1, 1, 0, 0, 0, fNaN}), "m_fRadius"},
        {"short bounds", BOUNDS, F({0, 0, 0, 1, 1, 1, 0, 0, 0}),
         "pStream->CanRead(NUM_FLOATS, sizeof(float))"},
    };
    for (const auto& rCase : arrCases)
    {
        SCOPED_TRACE(rCase.szCase);
        std::vector<uint64_t> vecTypes = GEOMETRY_TYPES;
        CRecords vecRecords = GEOMETRY_RECORDS;
        const auto it = std::ranges::find(vecRecords, rCase.uiGUID, &CRecords::value_type::first);
        if (it != vecRecords.end())
        {
            it->second = rCase.strBody;
        }
        else
        {
            vecTypes.push_back(rCase.uiGUID);
            vecRecords.emplace_back(rCase.uiGUID, rCase.strBody);
        }
        // A record that is cut short ends the file: what follows would only be read in its place.
        if (it != vecRecords.end() && rCase.uiGUID == VERTICES)
        {
            ASSERT_EQ(it + 1, vecRecords.end());
        }
        CLogCapture objLog;
        const int64_t nLiveBlocks = CSGMem::GetPool().GetNumLiveBlocks();
        EXPECT_FALSE(Load(MakeFile(vecTypes, vecRecords)));
        EXPECT_TRUE(objLog.Contains(rCase.szReason)) << testing::PrintToString(objLog.GetLines());
        EXPECT_EQ(CSGMem::GetPool().GetNumLiveBlocks(), nLiveBlocks);
    }
}

TEST(GeometryRecords, KeepWhatIsShared)
{
    const CVertexBufferPtr spVertices = MakeVertices({0, 0, 0, 1, 0, 0, 0, 1, 0});
    const CIndexBufferPtr spIndices = MakeIndices({0, 1, 2, 0, 1, 2});
    const auto spTriangles = CSGGeom_Triangles::Create(spIndices);
    const auto spList = CSGGeomList::Create();
    spList->AddBinding(CSGGeomBinding::Create(spTriangles, spVertices));
    spList->AddBinding(CSGGeomBinding::Create(CSGGeom_Lines::Create(spIndices), spVertices));
    spList->AddBinding(CSGGeomBinding::Create(spTriangles, spVertices));
    spList->AddBinding(spList->GetBinding(0));
    const auto spRoot = CSGNode::Create("root", "root");
    for (int n = 0; n < 2; ++n)
    {
        const auto spNode = CSGNode::Create("instance", "instance");
        spNode->AddData(CSGData_Geometry::Create(spList).get());
        spRoot->AddChild(spNode.get());
    }
    const auto spLoaded = SaveAndLoad(spRoot.get());
    ASSERT_TRUE(spLoaded);
    const auto GetList = [&](int32_t n) {
        return spLoaded->GetChild(n)->FindData<CSGData_Geometry>()->GetGeomList();
    };
    const CSGGeomList* pList = GetList(0);
    EXPECT_EQ(GetList(1), pList);
    ASSERT_EQ(pList->GetNumBindings(), 4);
    EXPECT_EQ(pList->GetBinding(3), pList->GetBinding(0));
    EXPECT_EQ(pList->GetBinding(2)->GetGeom(), pList->GetBinding(0)->GetGeom());
    EXPECT_EQ(pList->GetVertexBuffers().size(), 1u);
    const auto* pTriangles = dynamic_cast<CSGGeom_Triangles*>(pList->GetBinding(0)->GetGeom());
    const auto* pLines = dynamic_cast<CSGGeom_Lines*>(pList->GetBinding(1)->GetGeom());
    ASSERT_TRUE(pTriangles && pLines);
    EXPECT_EQ(pTriangles->GetIndexBuffer(), pLines->GetIndexBuffer());
}

// A file that could not be read again is not written.
TEST(GeometryRecords, AreNotWrittenWithIndicesOutsideTheVertices)
{
    const CVertexBufferPtr spVertices = MakeVertices({0, 0, 0, 1, 0, 0, 0, 1, 0});
    CLogCapture objLog;
    EXPECT_FALSE(MakeTriangles({0, 1, 3}, spVertices));
    EXPECT_TRUE(objLog.HasLine(
        "1 A CSGGeom_Triangles has vertex index 3, but its vertex buffer has only 3 vertices."));
    const auto spBinding = MakeTriangles({0, 1, 2}, spVertices);
    auto* pTriangles = dynamic_cast<CSGGeom_Triangles*>(spBinding->GetGeom());
    EXPECT_NE(Save(spBinding.get()), "");
    pTriangles->AddTriangle(0, 1, 3);
    EXPECT_EQ(Save(spBinding.get()), "");
    pTriangles->GetIndexBuffer()->SetIndex(5, 0);
    pTriangles->GetIndexBuffer()->AddIndices(std::array{0});
    EXPECT_EQ(Save(spBinding.get()), "") << "not whole triangles";
}
