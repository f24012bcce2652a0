// A file that was written once must load and be saved byte for byte the same for ever.

#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>

namespace
{

std::string ReadWhole(const std::string& rName)
{
    std::ifstream objFile(rName, std::ios::binary);
    return {std::istreambuf_iterator<char>(objFile), {}};
}

} // namespace

TEST(NestGolden, EveryClassStaysReadable)
{
    const std::string strGolden = QDSG_TEST_DATA_DIR "/every_class.nest";
    const std::string strBytes = ReadWhole(strGolden);
    const auto spReader = CSGNestReader::Create();
    ASSERT_TRUE(spReader->LoadFile(strGolden));
    const CTempFile objSaved("saved.nest");
    ASSERT_TRUE(
        CSGNestWriter::Create()->SaveResourceSet(objSaved.GetName(), spReader->m_spResourceSet.get()));
    EXPECT_TRUE(objSaved.ReadBytes() == strBytes) << "a record has changed without a new version";

    const CSGNode* pNode = spReader->m_spResourceSet->GetFirstNode()->GetChild(1);
    EXPECT_FALSE(pNode->IsVisible());
    EXPECT_EQ(pNode->FindData<CSGData_Geometry>()->GetGeomList()->GetNumBindings(), 4);
    // T(1,2,3) of the list and of its pair, the look-at's (0,0,1), all behind a turn by 0.5 and a scale of
    // (1,2,3).
    const CSGFloat3 objOrigin =
        pNode->FindData<CSGData_LocalTransform>()->GetTransform().TransformPoint({0, 0, 0});
    const float fCos = std::cos(0.5f);
    const float fSin = std::sin(0.5f);
    EXPECT_NEAR(objOrigin.x, 1 + fCos * 1 - fSin * 2 * 2, 1e-5f);
    EXPECT_NEAR(objOrigin.y, 2 + fSin * 1 + fCos * 2 * 2, 1e-5f);
    EXPECT_NEAR(objOrigin.z, 3 + 3 * (1 + 3), 1e-5f);

    // Every type of the documentation that can be an object is in the file.
    for (const SGStreamableType* pType : SGStreamableType::GetAllTypes())
    {
        uint64_t uiGUID = 0;
        ASSERT_TRUE(pType->GetGUID(uiGUID));
        const std::string strGUID(reinterpret_cast<const char*>(&uiGUID), sizeof(uiGUID));
        EXPECT_TRUE(pType->GetName() == "CTestData" || strBytes.find(strGUID) != std::string::npos)
            << pType->GetName();
    }
}
