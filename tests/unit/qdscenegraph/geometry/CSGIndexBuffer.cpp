// The width of index buffers, and the geometry that stands on them.

#include "GeomTestScene.h"

namespace
{

std::vector<int32_t> GetIndices(const CSGIndexBuffer& rBuffer)
{
    std::vector<int32_t> vecIndices;
    for (int32_t i = 0; i < rBuffer.GetNumIndices(); ++i)
    {
        vecIndices.push_back(rBuffer.GetIndex(i));
    }
    return vecIndices;
}

} // namespace

// The largest index of a mesh of 65535, 65536 and 65537 vertices.
TEST(CSGIndexBuffer, HasTheWidthThatItsLargestIndexNeeds)
{
    for (const int32_t nMaxIndex : {0, 65534, 65535, 65536, 0x7FFFFFFF})
    {
        const CIndexBufferPtr spBuffer = CSGIndexBuffer::Create(3, nMaxIndex);
        EXPECT_EQ(spBuffer->Is16Bit(), nMaxIndex <= 65535) << nMaxIndex;
        EXPECT_EQ(GetIndices(*spBuffer), (std::vector<int32_t>{0, 0, 0}));
        ASSERT_TRUE(spBuffer->SetIndex(1, nMaxIndex));
        EXPECT_EQ(spBuffer->Is16Bit(), nMaxIndex <= 65535) << nMaxIndex;
        const auto spLoaded = Load<CSGIndexBuffer>(Save(spBuffer.get()));
        ASSERT_TRUE(spLoaded);
        for (const CSGIndexBuffer* pBuffer : {spBuffer.get(), spLoaded.get()})
        {
            EXPECT_EQ(GetIndices(*pBuffer), (std::vector<int32_t>{0, nMaxIndex, 0}));
            EXPECT_EQ(pBuffer->GetMaxIndex(), nMaxIndex);
            EXPECT_EQ(pBuffer->Is16Bit(), nMaxIndex <= 65535);
        }
    }
}

TEST(CSGIndexBuffer, WidensWithTheFirstIndexThatNeedsIt)
{
    const CIndexBufferPtr spSet = MakeIndices({65535, 1, 2});
    ASSERT_TRUE(spSet->Is16Bit());
    ASSERT_TRUE(spSet->SetIndex(2, 65536));
    EXPECT_FALSE(spSet->Is16Bit());
    EXPECT_EQ(GetIndices(*spSet), (std::vector<int32_t>{65535, 1, 65536}));
    EXPECT_EQ(spSet->GetMaxIndex(), 65536);
    ASSERT_TRUE(spSet->SetIndex(2, 0));
    EXPECT_EQ(spSet->GetMaxIndex(), 65535) << "the largest one has been overwritten";

    const CIndexBufferPtr spAdded = MakeIndices({65535, 1, 2});
    const auto spTriangles = CSGGeom_Triangles::Create(spAdded);
    ASSERT_TRUE(spTriangles->AddTriangle(3, 70000, 4));
    EXPECT_FALSE(spAdded->Is16Bit());
    EXPECT_EQ(GetIndices(*spAdded), (std::vector<int32_t>{65535, 1, 2, 3, 70000, 4}));
}

TEST(CSGIndexBuffer, RefusesWithoutAChange)
{
    const CIndexBufferPtr spBuffer = MakeIndices({5, 6});
    EXPECT_FALSE(spBuffer->SetIndex(-1, 0));
    EXPECT_FALSE(spBuffer->SetIndex(2, 0));
    EXPECT_FALSE(spBuffer->SetIndex(2, 70000));
    EXPECT_FALSE(spBuffer->SetIndex(0, -1));
    EXPECT_FALSE(spBuffer->AddIndices(std::vector<int32_t>{7, -1, 70000}));
    EXPECT_EQ(spBuffer->GetIndex(-1), -1);
    EXPECT_EQ(spBuffer->GetIndex(2), -1);
    EXPECT_EQ(GetIndices(*spBuffer), (std::vector<int32_t>{5, 6}));
    EXPECT_TRUE(spBuffer->Is16Bit());
    EXPECT_FALSE(CSGIndexBuffer::Create(-1, 0));
    EXPECT_FALSE(CSGIndexBuffer::Create(1, -1));
    EXPECT_EQ(CSGIndexBuffer::Create(0, 9)->GetMaxIndex(), -1);
}

TEST(CSGGeom, GroupsIndicesByKind)
{
    const CIndexBufferPtr spBuffer = MakeIndices({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    const auto spTriangles = CSGGeom_Triangles::Create(spBuffer);
    const auto spQuads = CSGGeom_Quads::Create(spBuffer);
    const auto spLines = CSGGeom_Lines::Create(spBuffer);
    int32_t arrTriangle[3] = {}, arrQuad[4] = {}, arrLine[2] = {};
    ASSERT_TRUE(spTriangles->GetTriangle(3, arrTriangle) && spQuads->GetQuad(2, arrQuad) &&
                spLines->GetLine(5, arrLine));
    EXPECT_EQ(std::to_array(arrTriangle), (std::array{9, 10, 11}));
    EXPECT_EQ(std::to_array(arrQuad), (std::array{8, 9, 10, 11}));
    EXPECT_EQ(std::to_array(arrLine), (std::array{10, 11}));
    EXPECT_FALSE(spTriangles->GetTriangle(4, arrTriangle) || spTriangles->GetTriangle(-1, arrTriangle));
    EXPECT_FALSE(spQuads->GetQuad(3, arrQuad) || spLines->GetLine(6, arrLine));
    EXPECT_EQ(spTriangles->CountTriangles(), 4);
    EXPECT_EQ(spQuads->CountTriangles(), 6);
    EXPECT_EQ(spLines->CountLines(), 6);

    CLogCapture objLog;
    EXPECT_FALSE(CSGGeom_Quads::Create(MakeIndices({1, 2, 3, 4, 5})));
    EXPECT_TRUE(objLog.HasLine("1 The number of indices 5 of a CSGGeom_Quads is not a multiple of 4."));
    EXPECT_FALSE(CSGGeom_Triangles::Create(nullptr));
    EXPECT_TRUE(objLog.HasLine("1 Handed in NULL spIndexBuffer"));
}

TEST(CSGGeom_PrimList, TakesPrimitivesOfEveryKind)
{
    const auto spList = CSGGeom_PrimList::Create();
    EXPECT_EQ(spList->GetMaxIndex(), -1);
    ASSERT_TRUE(spList->AddPrimitive(CSGPrim_Quad::Create(std::vector<int32_t>{3, 9, 4, 5})));
    ASSERT_TRUE(spList->AddPrimitive(CSGPrim_Polygon::Create(std::vector<int32_t>{0, 1, 2, 3, 4})));
    ASSERT_TRUE(spList->AddPrimitive(CSGPrim_Triangle::Create(std::vector<int32_t>{0, 1, 2})));
    EXPECT_EQ(spList->CountTriangles(), 2 + 3 + 1);
    EXPECT_EQ(spList->GetMaxIndex(), 9);
    EXPECT_EQ(spList->GetPrimitive(1)->GetIndex(4), 4);
    EXPECT_EQ(spList->GetPrimitive(1)->GetIndex(5), -1);
    EXPECT_EQ(spList->GetPrimitive(3), nullptr);
    EXPECT_FALSE(CSGPrim_Triangle::Create(std::vector<int32_t>{0, 1}));
    EXPECT_FALSE(CSGPrim_Triangle::Create(std::vector<int32_t>{0, 1, -1}));
    EXPECT_FALSE(CSGPrim_Quad::Create(std::vector<int32_t>{0, 1, 2, 3, 4}));
    EXPECT_FALSE(CSGPrim_Polygon::Create(std::vector<int32_t>{0, 1}));
}
