// The records of cameras byte for byte.

#include "qdscenegraph/camera/CSGCam_OrthoYMag.h"
#include "qdscenegraph/camera/CSGCam_PerspYFOV.h"
#include "qdscenegraph/camera/CSGData_Camera.h"
#include "qdscenegraph/node/CSGNode.h"
#include "support/NestTestFile.h"

TEST(CSGCamera, Records)
{
    const std::pair<boost::intrusive_ptr<CSGCamera>, std::string> arrCases[] = {
        {CSGCam_PerspYFOV::Create("p", 37.5f, {1.75f, 0.25f, 500}), S("p") + F({1.75f, 0.25f, 500, 37.5f})},
        {CSGCam_OrthoYMag::Create("o", 2.25f, {2, -1, 1000}), S("o") + F({2, -1, 1000, 2.25f})}};
    for (const auto& [spCamera, strBody] : arrCases)
    {
        const SGStreamableType* pType = spCamera->GetSGStreamableType();
        const CNestTypes vecTypes = {TypeOf<CSGData_Camera>(), TypeOf<CSGData>(), pType, TypeOf<CSGCamera>()};
        const std::string strFile = Save(CSGData_Camera::Create(spCamera).get());
        EXPECT_EQ(strFile, MakeNest(vecTypes, {{TypeOf<CSGData_Camera>(), I(1)}, {pType, strBody}}));
        EXPECT_EQ(Save(Load(strFile).get()), strFile);
        ExpectRefused(MakeNest(vecTypes, {{TypeOf<CSGData_Camera>(), I(0)}, {pType, strBody}}),
                      "type CSGData_Camera");
    }
}
