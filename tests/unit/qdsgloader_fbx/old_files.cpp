// A file of version 6: inline geometry, and a take with constant, linear and cubic keys.
#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdscenegraph/camera/CSGData_Camera.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdsgloader_fbx/CFBXTestGraph.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{

TEST(OldFBXFile, BoxInATake)
{
    for (int nFlags = 0; nFlags < 4; ++nFlags)
    {
        SCOPED_TRACE(nFlags);
        const CFBXTestGraph objGraph(QDSG_TEST_DATA_DIR "/old_box.fbx", nFlags);
        EXPECT_EQ(objGraph.GetComplaints(), std::vector<std::string>());
        ASSERT_TRUE(objGraph.Find("Box/Rust") != nullptr && objGraph.Find("Eye/Eye") != nullptr);
        const auto* pGeometry = objGraph.Find("Box/Rust")->FindData<CSGData_Geometry>();
        EXPECT_EQ(pGeometry->GetGeomList()->GetBinding(0)->GetVertexBuffer()->GetNumVertices(), 24);
        EXPECT_NE(objGraph.Find("Eye/Eye")->FindData<CSGData_Camera>(), nullptr);

        const auto spAnimation = objGraph.m_spLoader->LoadAnimation("Take 001");
        ASSERT_NE(spAnimation, nullptr);
        EXPECT_EQ(spAnimation->GetBeginTime(), 0);
        EXPECT_EQ(spAnimation->GetEndTime(), 2);
        // Eased from 0 to 4, a tent, held at 0 until it is 3; a quarter of a turn in 2 seconds; from 1 to 3
        // with slopes of 0 and 2: 1.5 in the middle.
        constexpr struct
        {
            float fTime;
            double arrPlace[3];
            double dScale;
            bool bVisible;
        } CASES[] = {{0, {0, 0, 0}, 1, true},
                     {0.5f, {0.625, 0.5, 0}, 1.125, true},
                     {1, {2, 1, 3}, 1.5, true},
                     {1.75f, {3.828125, 0.25, 3}, 2.53125, false}};
        for (const auto& rCase : CASES)
        {
            SCOPED_TRACE(rCase.fTime);
            spAnimation->PoseModelAtTime(objGraph.m_spRoot.get(), rCase.fTime);
            const CTransform3 objWorld = objGraph.GetWorld("Box");
            const double dAngle = rCase.fTime * std::numbers::pi / 4;
            EXPECT_NEAR(objWorld.m_objTranslation.x, rCase.arrPlace[0], 1e-5);
            EXPECT_NEAR(objWorld.m_objTranslation.y, rCase.arrPlace[1], 1e-5);
            EXPECT_NEAR(objWorld.m_objTranslation.z, rCase.arrPlace[2], 1e-5);
            EXPECT_NEAR(objWorld.m_objMatrix.m[0][0], rCase.dScale * std::cos(dAngle), 1e-5);
            EXPECT_NEAR(objWorld.m_objMatrix.m[0][1], rCase.dScale * std::sin(dAngle), 1e-5);
            EXPECT_EQ(objGraph.Find("Box")->IsVisible(), rCase.bVisible);
        }
    }
}

} // namespace
