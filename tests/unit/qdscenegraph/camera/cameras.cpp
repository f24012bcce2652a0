// The records of cameras byte for byte.

#include "qdscenegraph/camera/CSGCam_OrthoYMag.h"
#include "qdscenegraph/camera/CSGCam_PerspYFOV.h"
#include "qdscenegraph/camera/CSGData_Camera.h"
#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/node/CSGNode.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

TEST(CSGCamera, Records)
{
    const auto spSet = CSGResourceSet::Create();
    const boost::intrusive_ptr<CSGCamera> arrCameras[] = {
        CSGCam_PerspYFOV::Create("p", 37.5f, {1.75f, 0.25f, 500}),
        CSGCam_OrthoYMag::Create("o", 2.25f, {2, -1, 1000})};
    for (const auto& rspCamera : arrCameras)
    {
        const auto spNode = CSGNode::Create("n", "");
        ASSERT_TRUE(spNode->AddData(CSGData_Camera::Create(rspCamera).get()));
        spSet->AddTopLevelNode(spNode.get());
    }
    const CTempFile objFile("cameras.nest");
    ASSERT_TRUE(CSGNestWriter::Create()->SaveResourceSet(objFile.GetName(), spSet.get()));
    const std::string strFile = objFile.ReadBytes();
    const float arrPersp[] = {1.75f, 0.25f, 500, 37.5f};
    const float arrOrtho[] = {2, -1, 1000, 2.25f};
    for (const auto& [strName, arrValues] : {std::pair("p", arrPersp), std::pair("o", arrOrtho)})
    {
        const std::string strRecord = std::string("\1\0\0\0", 4) + strName +
                                      std::string(reinterpret_cast<const char*>(arrValues), sizeof(arrPersp));
        EXPECT_NE(strFile.find(strRecord), std::string::npos) << strName;
    }
    const auto spReader = CSGNestReader::Create();
    ASSERT_TRUE(spReader->LoadFile(objFile.GetName()));
    ASSERT_TRUE(CSGNestWriter::Create()->SaveResourceSet(objFile.GetName(), spReader->m_spResourceSet.get()));
    EXPECT_EQ(objFile.ReadBytes(), strFile);

    // A link to a node.
    std::string strDamaged = strFile;
    uint64_t uiGUID = 0;
    ASSERT_TRUE(CSGData_Camera::GetStaticSGStreamableType()->GetGUID(uiGUID));
    const size_t nRecord = strFile.rfind({reinterpret_cast<const char*>(&uiGUID), sizeof(uiGUID)});
    objFile.WriteBytes(strDamaged.replace(nRecord + sizeof(uiGUID), 4, 4, '\0'));
    EXPECT_FALSE(CSGNestReader::Create()->LoadFile(objFile.GetName()));
}
