#include "qdscenegraph/geometry/CSGData_GeomBounds.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/node/CSGNode.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_GEOM_BOUNDS)]] CSGDataTypeInfo CSGData_GeomBounds::
    ms_objDataTypeInfo(CSGData_GeomBounds::SG_TYPE_NAME);

namespace
{

const SGStreamableRegistration<CSGData_GeomBounds> s_objRegistration(0x6A020078A9BB18A1, 1, 1);

CSGFloat3 ReadFloat3(CStream& rStream)
{
    const float fX = rStream.ReadFloat();
    const float fY = rStream.ReadFloat();
    return {fX, fY, rStream.ReadFloat()};
}

void WriteFloat3(CStream& rStream, const CSGFloat3& rValue)
{
    rStream.WriteFloat(rValue.x);
    rStream.WriteFloat(rValue.y);
    rStream.WriteFloat(rValue.z);
}

bool HasNaN(const CSGFloat3& rValue) { return rValue != rValue; }

} // namespace

boost::intrusive_ptr<CSGData_GeomBounds> CSGData_GeomBounds::GetOrCreateFromNode(CSGNode* pNode)
{
    QD_CHECK_ARG(pNode, nullptr);
    if (auto* pData = pNode->FindData<CSGData_GeomBounds>())
    {
        return pData;
    }
    boost::intrusive_ptr<CSGData_GeomBounds> spNewData = CSGMem::Construct<CSGData_GeomBounds>();
    QD_CHECK_CREATED(spNewData, nullptr);
    QD_CHECK_OR_RETURN(pNode->AddData(spNewData.get()), "Call %s failed", "pNode->AddData(spNewData)",
                       nullptr);
    return spNewData;
}

CSGData_GeomBounds::CSource CSGData_GeomBounds::GetSource() const
{
    const auto* pGeometry = m_pNode != nullptr ? m_pNode->FindData<CSGData_Geometry>() : nullptr;
    const CSGGeomList* pGeomList = pGeometry != nullptr ? pGeometry->GetGeomList() : nullptr;
    return pGeomList != nullptr ? CSource{pGeometry->GetEditStamp().Get(), pGeomList->GetNewestStamp()}
                                : CSource();
}

const CSGBounds* CSGData_GeomBounds::FindDeformedBounds() const
{
    const CSGBounds* pBounds = nullptr;
    if (m_pNode != nullptr)
    {
        m_pNode->GetDataSet().ForEach([&](const CSGData* pData) {
            pBounds = pBounds != nullptr ? pBounds : pData->GetDeformedBounds(m_pNode);
        });
    }
    return pBounds;
}

const CSGBounds& CSGData_GeomBounds::GetBounds() const
{
    if (const CSGBounds* pDeformed = FindDeformedBounds())
    {
        return *pDeformed;
    }
    const CSource objSource = GetSource();
    if (m_objMadeFrom != objSource)
    {
        m_objBounds = objSource != CSource()
                          ? m_pNode->FindData<CSGData_Geometry>()->GetGeomList()->GetBounds()
                          : CSGBounds();
        m_objMadeFrom = objSource;
    }
    return m_objBounds;
}

boost::intrusive_ptr<CSGData> CSGData_GeomBounds::CreateCopy(CSGCopyData*) const
{
    boost::intrusive_ptr<CSGData_GeomBounds> spCopy = CSGMem::Construct<CSGData_GeomBounds>();
    if (spCopy)
    {
        // The copied node shares the geometry, so that nothing has to be computed for it.
        spCopy->m_objBounds = m_objBounds;
        spCopy->m_objMadeFrom = m_objMadeFrom;
    }
    return spCopy;
}

bool CSGData_GeomBounds::NotifyAddedToNode(CSGNode* pNode)
{
    QD_CHECK(m_pNode == 0, false);
    m_pNode = pNode;
    return true;
}

bool CSGData_GeomBounds::NotifyRemovedFromNode(CSGNode* pNode) { return NotifyNodeDestroyed(pNode); }

bool CSGData_GeomBounds::NotifyNodeDestroyed(CSGNode* pNode)
{
    // A damaged file may have offered it to more than one node.
    if (m_pNode == pNode)
    {
        m_pNode = nullptr;
    }
    return true;
}

bool CSGData_GeomBounds::ReadFromStream(CStream* pStream, CSGStreamableLoadState*)
{
    QD_CHECK_ARG(pStream, false);
    constexpr int64_t NUM_FLOATS = 10;
    QD_CHECK(pStream->CanRead(NUM_FLOATS, sizeof(float)), false);
    CSGBoundingBox& rBox = m_objBounds.m_objBox;
    CSGBoundingSphere& rSphere = m_objBounds.m_objSphere;
    rBox.m_objMin = ReadFloat3(*pStream);
    rBox.m_objMax = ReadFloat3(*pStream);
    rSphere.m_objCenter = ReadFloat3(*pStream);
    rSphere.m_fRadius = pStream->ReadFloat();
    QD_CHECK(!HasNaN(rBox.m_objMin) && !HasNaN(rBox.m_objMax), false);
    QD_CHECK(!HasNaN(rSphere.m_objCenter) && rSphere.m_fRadius == rSphere.m_fRadius, false);
    return true;
}

bool CSGData_GeomBounds::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    const CSGBounds& rBounds = GetBounds();
    WriteFloat3(*pStream, rBounds.m_objBox.m_objMin);
    WriteFloat3(*pStream, rBounds.m_objBox.m_objMax);
    WriteFloat3(*pStream, rBounds.m_objSphere.m_objCenter);
    pStream->WriteFloat(rBounds.m_objSphere.m_fRadius);
    return pStream->IsGood();
}

bool CSGData_GeomBounds::PostRead(CSGStreamableLoadState*)
{
    m_objMadeFrom = GetSource();
    return true;
}

void CSGData_GeomBounds::DropLinks() { m_pNode = nullptr; }

void CSGData_GeomBounds::OutputDebugInfo(const CQDString& rIndent) const
{
    const auto& [objBox, objSphere] = GetBounds();
    const auto& [objMin, objMax] = objBox;
    const CSGFloat3& rCenter = objSphere.m_objCenter;
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_GeomBounds: 0x%08llX", rIndent, LogAddress(this));
    Log(QD_SCENEGRAPH, LOG_INFO, "%s    Box: (%g, %g, %g) - (%g, %g, %g)", rIndent, objMin.x, objMin.y,
        objMin.z, objMax.x, objMax.y, objMax.z);
    Log(QD_SCENEGRAPH, LOG_INFO, "%s    Sphere: (%g, %g, %g) - Radius: %g", rIndent, rCenter.x, rCenter.y,
        rCenter.z, objSphere.m_fRadius);
}
