#include "fbxsdk/geometry/FbxLayerElement.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/objects/FBXObjectName.h"
#include "qdcommon/CLog.h"

#include <algorithm>
#include <array>
#include <limits>

namespace
{

// The names of the records that a kind's arrays stand in.
struct CNames
{
    std::string_view m_strValues;
    std::string_view m_strIndices;
};

constexpr std::array<CNames, FbxLayerElement::eTypeCount> NAMES{{
    {"Normals", "NormalsIndex"},
    {"Tangents", "TangentsIndex"},
    {"UV", "UVIndex"},
    {"Colors", "ColorIndex"},
}};

} // namespace

size_t FbxLayerElement::CCounts::Get(EMappingMode eMode) const
{
    switch (eMode)
    {
    case eByControlPoint:
        return m_uiControlPoints;
    case eByPolygonVertex:
        return m_uiPolygonVertices;
    case eByPolygon:
        return m_uiPolygons;
    case eAllSame:
        return 1;
    default:
        return 0;
    }
}

FbxLayerElement::EMappingMode FbxLayerElement::GetMappingMode(std::string_view strText)
{
    if (strText == "ByPolygonVertex")
    {
        return eByPolygonVertex;
    }
    if (strText == "ByVertice" || strText == "ByVertex" || strText == "ByControlPoint")
    {
        return eByControlPoint;
    }
    if (strText == "ByPolygon" || strText == "ByFace")
    {
        return eByPolygon;
    }
    return strText == "AllSame" ? eAllSame : strText == "ByEdge" ? eByEdge : eNone;
}

std::optional<FbxLayerElement> FbxLayerElement::Read(EType eType, const CFBXRecord& rRecord,
                                                     const CCounts& rCounts)
{
    const CNames& rNames = NAMES[eType];
    std::vector<float> vecValues;
    const CFBXRecord* pValues = rRecord.FindChild(rNames.m_strValues);
    if (pValues == nullptr || !pValues->ReadFloats(vecValues) || vecValues.empty())
    {
        return std::nullopt; // exporters write sets that they have nothing for
    }
    std::vector<int32_t> vecIndices;
    if (rRecord.GetChildString("ReferenceInformationType") != "Direct")
    {
        const CFBXRecord* pIndices = rRecord.FindChild(rNames.m_strIndices);
        if (pIndices != nullptr && !pIndices->ReadInts(vecIndices))
        {
            return std::nullopt;
        }
    }
    const std::string_view strMapping = rRecord.GetChildString("MappingInformationType");
    return Create(eType, CQDString(LimitFBXName(rRecord.GetChildString("Name"))), GetMappingMode(strMapping),
                  std::move(vecValues), std::move(vecIndices), rCounts, rRecord.Describe());
}

std::optional<FbxLayerElement> FbxLayerElement::Create(EType eType, CQDString strName, EMappingMode eMode,
                                                       std::vector<float>&& vecValues,
                                                       std::vector<int32_t>&& vecIndices,
                                                       const CCounts& rCounts, const CQDString& rOwner)
{
    FbxLayerElement objElement;
    objElement.m_eType = eType;
    objElement.m_eMappingMode = eMode;
    objElement.m_strName = std::move(strName);
    objElement.m_vecValues = std::move(vecValues);
    objElement.m_vecIndices = std::move(vecIndices);
    return objElement.Repair(rCounts, rOwner) ? std::optional(std::move(objElement)) : std::nullopt;
}

bool FbxLayerElement::Repair(const CCounts& rCounts, const CQDString& rOwner)
{
    const size_t uiSize = static_cast<size_t>(GetValueSize());
    const size_t uiKeys = rCounts.Get(m_eMappingMode);
    size_t uiValues = m_vecValues.size() / uiSize;
    if (uiKeys == 0)
    {
        Log(FBXSDK, LOG_WARNING, "Ignoring layer element %s: its mapping gives no corner a value", rOwner);
        return false;
    }
    const size_t uiGiven = m_vecIndices.empty() ? uiValues : m_vecIndices.size();
    // Half of the corners without a value is no slip any more, and what is left out takes memory.
    if (uiGiven < uiKeys - uiKeys / 2 || uiValues >= std::numeric_limits<int32_t>::max())
    {
        Log(FBXSDK, LOG_WARNING, "Ignoring layer element %s: %llu values for %llu", rOwner, uiGiven, uiKeys);
        return false;
    }

    size_t uiMissing = uiKeys - std::min(uiGiven, uiKeys);
    const float fMissing = m_eType == eVertexColor ? 1.0f : 0.0f;
    if (m_vecIndices.empty())
    {
        m_vecValues.resize(uiKeys * uiSize, fMissing);
    }
    else
    {
        m_vecValues.resize(uiValues * uiSize);
        m_vecIndices.resize(uiKeys, -1);
        uiMissing = 0;
        for (int32_t& rIndex : m_vecIndices)
        {
            if (rIndex < 0 || static_cast<size_t>(rIndex) >= uiValues)
            {
                rIndex = static_cast<int32_t>(uiValues);
                ++uiMissing;
            }
        }
        if (uiMissing > 0)
        {
            m_vecValues.resize((uiValues + 1) * uiSize, fMissing);
        }
    }
    if (uiMissing > 0)
    {
        Log(FBXSDK, LOG_WARNING, "Layer element %s has no values for %llu of %llu", rOwner, uiMissing,
            uiKeys);
    }
    return true;
}

void FbxLayerElement::Remap(std::span<const int32_t> arrPolygons, std::span<const int32_t> arrPolygonVertices)
{
    if (m_eMappingMode != eByPolygon && m_eMappingMode != eByPolygonVertex)
    {
        return;
    }
    const std::span<const int32_t> arrKeys = m_eMappingMode == eByPolygon ? arrPolygons : arrPolygonVertices;
    std::vector<int32_t> vecIndices(arrKeys.begin(), arrKeys.end());
    if (!m_vecIndices.empty())
    {
        for (int32_t& rIndex : vecIndices)
        {
            rIndex = m_vecIndices[static_cast<size_t>(rIndex)];
        }
    }
    m_vecIndices = std::move(vecIndices);
}
