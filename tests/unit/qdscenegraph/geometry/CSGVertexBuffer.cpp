// Vertex formats and access to the members of vertices.

#include "GeomTestScene.h"

namespace
{
using EMember = CSGVertexFormat::EMember;
constexpr EMember POSITION = CSGVertexFormat::MEMBER_POSITION;
constexpr EMember TEXCOORD = CSGVertexFormat::MEMBER_TEXCOORD;
constexpr EMember COLOR = CSGVertexFormat::MEMBER_COLOR;
} // namespace

TEST(CSGVertexFormat, DescribesMembersInTheirOrder)
{
    CSGVertexFormat objFormat;
    EXPECT_EQ(objFormat.GetDescription(), "");
    ASSERT_TRUE(objFormat.AddMemberN(POSITION, 0, 3));
    ASSERT_TRUE(objFormat.AddMemberN(TEXCOORD, 2, 2));
    ASSERT_TRUE(objFormat.AddMemberN(TEXCOORD, 1, 3));
    ASSERT_TRUE(objFormat.AddMemberN(CSGVertexFormat::MEMBER_NORMAL, 7, 3));
    ASSERT_TRUE(objFormat.AddMemberN(COLOR, 0, 4));
    EXPECT_EQ(objFormat.GetDescription(), "position:3 texcoord2:2 texcoord1:3 normal7:3 color0:4");
    EXPECT_EQ(objFormat.GetFloatsPerVertex(), 15);
    EXPECT_EQ(objFormat.FindMember(TEXCOORD, 1)->m_nOffset, 5);
    EXPECT_EQ(objFormat.FindMember(TEXCOORD, 0), nullptr);
    EXPECT_EQ(objFormat.FindLowestMember(TEXCOORD)->m_nSet, 1);
}

TEST(CSGVertexFormat, RefusesAndKeepsWhatItHas)
{
    const struct
    {
        int32_t nMember, nSet, nFloats;
    } arrRefused[] = {{0, 0, 3},   {0, 0, 4},  {-1, 0, 1}, {4, 0, 1}, {1, -1, 3},
                      {1, 256, 3}, {1, 0, 17}, {1, 0, 0},  {1, 0, -1}};
    CSGVertexFormat objFormat;
    ASSERT_TRUE(objFormat.AddMemberN(POSITION, 0, 3));
    const CSGVertexFormat objBefore = objFormat;
    for (const auto& [nMember, nSet, nFloats] : arrRefused)
    {
        EXPECT_FALSE(objFormat.AddMemberN(static_cast<EMember>(nMember), nSet, nFloats))
            << nMember << nSet << nFloats;
        EXPECT_EQ(objFormat, objBefore);
    }
    CLogCapture objLog;
    objFormat.AddMemberN(POSITION, 0, 3);
    EXPECT_TRUE(objLog.HasLine("1 The vertex format position:3 already has position of set 0."));
    EXPECT_TRUE(objFormat.AddMemberN(CSGVertexFormat::MEMBER_NORMAL, 255, 16));
}

TEST(CSGVertexBuffer, SetsAndGetsMembersOfInterleavedVertices)
{
    CSGVertexFormat objFormat;
    objFormat.AddMemberN(POSITION, 0, 3);
    objFormat.AddMemberN(TEXCOORD, 1, 2);
    objFormat.AddMemberN(COLOR, 0, 4);
    const CVertexBufferPtr spBuffer = CSGVertexBuffer::Create(objFormat, 2);
    const float arrTexCoord[] = {0.25f, 0.75f, 9.0f};
    ASSERT_TRUE(spBuffer->SetVertMemberData(1, TEXCOORD, 1, arrTexCoord, 2));
    ASSERT_TRUE(spBuffer->SetVertColor(0, 0, {0.1f, 0.2f, 0.3f, 0.4f}));
    const std::vector<float> vecExpected = {0, 0, 0, 0,     0,     0.1f, 0.2f, 0.3f, 0.4f,
                                            0, 0, 0, 0.25f, 0.75f, 0,    0,    0,    0};
    const std::span<const float> arrData = spBuffer->GetData();
    EXPECT_EQ(std::vector<float>(arrData.begin(), arrData.end()), vecExpected);
    EXPECT_EQ(spBuffer->GetVertMemberData(1, TEXCOORD, 1), &arrData[12]);

    EXPECT_FALSE(spBuffer->SetVertMemberData(0, TEXCOORD, 1, arrTexCoord, 3)) << "another number of floats";
    EXPECT_FALSE(spBuffer->SetVertMemberData(0, TEXCOORD, 0, arrTexCoord, 2)) << "no such set";
    EXPECT_FALSE(spBuffer->SetVertColor(0, 1, {}));
    for (const int32_t nVertex : {-1, 2})
    {
        EXPECT_FALSE(spBuffer->SetVertMemberData(nVertex, TEXCOORD, 1, arrTexCoord, 2));
        EXPECT_EQ(spBuffer->GetVertMemberData(nVertex, TEXCOORD, 1), nullptr);
    }
}

TEST(CSGVertexBuffer, IsNotMadeWithoutMembersOrMemory)
{
    CSGVertexFormat objFormat;
    EXPECT_FALSE(CSGVertexBuffer::Create(objFormat, 1)) << "vertices of no size";
    EXPECT_TRUE(CSGVertexBuffer::Create(objFormat, 0));
    objFormat.AddMemberN(POSITION, 0, 3);
    EXPECT_FALSE(CSGVertexBuffer::Create(objFormat, -1));
    EXPECT_TRUE(CSGVertexBuffer::Create(objFormat, 0));
}
