// The records of geometry byte for byte, what is refused, and what stays shared.

#include "GeomTestScene.h"

#include <bit>
#include <limits>

using namespace std::string_literals;

namespace
{

const auto DATA = TypeOf<CSGData>(), GEOM = TypeOf<CSGGeom>(), GEOMETRY = TypeOf<CSGData_Geometry>(),
           LIST = TypeOf<CSGGeomList>(), BINDING = TypeOf<CSGGeomBinding>(),
           TRIANGLES = TypeOf<CSGGeom_Triangles>(), QUADS = TypeOf<CSGGeom_Quads>(),
           LINES = TypeOf<CSGGeom_Lines>(), PRIM_LIST = TypeOf<CSGGeom_PrimList>(),
           INDICES = TypeOf<CSGIndexBuffer>(), VERTICES = TypeOf<CSGVertexBuffer>(),
           BOUNDS = TypeOf<CSGData_GeomBounds>();

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

const CNestTypes GEOMETRY_TYPES = {GEOMETRY, DATA, LIST, BINDING, TRIANGLES, GEOM, INDICES, VERTICES};
const CNestRecords GEOMETRY_RECORDS = {{GEOMETRY, I({1})},      {LIST, I({1, 2})},
                                       {BINDING, I({3, 5})},    {TRIANGLES, I({4})},
                                       {INDICES, ONE_TRIANGLE}, {VERTICES, THREE_VERTICES}};

} // namespace

TEST(GeometryRecords, AreWrittenAsDocumented)
{
    EXPECT_EQ(Save(MakeGeometry().get()), MakeNest(GEOMETRY_TYPES, GEOMETRY_RECORDS));

    const std::string strWide = I({4, 4, 0, 65536, 7, 1});
    EXPECT_EQ(Save(CSGGeom_Quads::Create(MakeIndices({0, 65536, 7, 1})).get()),
              MakeNest({QUADS, GEOM, INDICES}, {{QUADS, I({1})}, {INDICES, strWide}}));
    EXPECT_EQ(Save(CSGGeom_Lines::Create(MakeIndices({0, 65536, 7, 1})).get()),
              MakeNest({LINES, GEOM, INDICES}, {{LINES, I({1})}, {INDICES, strWide}}));

    const auto spList = CSGGeom_PrimList::Create();
    spList->AddPrimitive(CSGPrim_Triangle::Create(std::vector<int32_t>{1, 2, 3}));
    spList->AddPrimitive(CSGPrim_Quad::Create(std::vector<int32_t>{4, 5, 6, 7}));
    spList->AddPrimitive(CSGPrim_Polygon::Create(std::vector<int32_t>{8, 9, 10}));
    EXPECT_EQ(
        Save(spList.get()),
        MakeNest({PRIM_LIST, GEOM}, {{PRIM_LIST, I({3, 0, 3, 1, 2, 3, 1, 4, 4, 5, 6, 7, 2, 3, 8, 9, 10})}}));

    const boost::intrusive_ptr<CSGData_GeomBounds> spBounds = CSGMem::Construct<CSGData_GeomBounds>();
    const float fInf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Save(spBounds.get()),
              MakeNest({BOUNDS, DATA}, {{BOUNDS, F({fInf, fInf, fInf, -fInf, -fInf, -fInf, 0, 0, 0, -1})}}));
}

TEST(GeometryRecords, AreReadBackToTheSameBytes)
{
    const std::string strFile = MakeNest(GEOMETRY_TYPES, GEOMETRY_RECORDS);
    const auto spLoaded = Load(strFile);
    ASSERT_TRUE(spLoaded);
    EXPECT_EQ(Save(spLoaded.get()), strFile);

    const std::string strPrims =
        MakeNest({PRIM_LIST, GEOM}, {{PRIM_LIST, I({2, 2, 5, 1, 2, 3, 4, 5, 0, 3, 6, 7, 8})}});
    const auto spPrims = Load(strPrims);
    ASSERT_TRUE(spPrims);
    EXPECT_EQ(Save(spPrims.get()), strPrims);
}

// Links run in both directions: here what is linked to stands first.
TEST(GeometryRecords, AreReadInAnyOrder)
{
    const CNestRecords vecRecords = {{VERTICES, THREE_VERTICES}, {INDICES, ONE_TRIANGLE}, {TRIANGLES, I({1})},
                                     {BINDING, I({2, 0})},       {LIST, I({1, 3})},       {GEOMETRY, I({4})}};
    EXPECT_TRUE(Load(MakeNest(GEOMETRY_TYPES, vecRecords)));
}

TEST(GeometryRecords, AreRefusedWithAReason)
{
    const float fNaN = std::numeric_limits<float>::quiet_NaN();
    const struct
    {
        const char* szCase;
        const SGStreamableType* pType;
        std::string strBody; // in place of that type's good one
        const char* szReason;
    } arrCases[] = {
        {"no list", GEOMETRY, I({-1}), "m_spGeomList is NULL"},
        {"a list of another type", GEOMETRY, I({2}), "type CSGGeomBinding"},
        {"more bindings than bytes", LIST, I({0x10000000, 2}),
         "pStream->CanRead(nCount, sizeof(int32_t)) is false"},
        {"a negative number of bindings", LIST, I({-1, 2}), "pStream->CanRead(nCount"},
        {"a missing binding", LIST, I({1, -1}), "spLink is NULL"},
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
        CNestTypes vecTypes = GEOMETRY_TYPES;
        // The vertices are the last: what follows a record that is cut short would only be read in its place.
        CNestRecords vecRecords = GEOMETRY_RECORDS;
        const auto it = std::ranges::find(vecRecords, rCase.pType, &CNestRecord::m_pType);
        if (it != vecRecords.end())
        {
            it->m_strBody = rCase.strBody;
        }
        else
        {
            vecTypes.push_back(rCase.pType);
            vecRecords.push_back({rCase.pType, rCase.strBody});
        }
        ExpectRefused(MakeNest(vecTypes, vecRecords), rCase.szReason);
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
    const auto spLoaded = Load<CSGNode>(Save(spRoot.get()));
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
