#include "fbxsdk/geometry/CFBXMeshReader.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/objects/CFBXObject.h"
#include "fbxsdk/objects/FBXObjectName.h"
#include "qdcommon/CLog.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace
{

// Triangles have up to three times as many corners as the polygons, and each has to have a number.
constexpr size_t MAX_POLYGON_VERTICES = std::numeric_limits<int32_t>::max() / 3;

// Of normals, texture coordinates and colours each: one value for the whole mesh in the file becomes one for
// each vertex.
constexpr size_t MAX_ELEMENTS = 24;

} // namespace

bool CFBXMeshReader::Read(const CFBXObject& rObject)
{
    if (rObject.pRecord == nullptr)
    {
        Log(FBXSDK, LOG_ERROR, "The file says nothing of mesh '%s'", CQDString(rObject.strName));
        return false;
    }
    const CFBXRecord& rRecord = *rObject.pRecord;
    m_strDescription = rRecord.Describe();
    const CFBXRecord* pVertices = rRecord.FindChild("Vertices");
    if (pVertices != nullptr && !pVertices->ReadDoubles(m_rMesh.m_vecControlPoints))
    {
        return false;
    }
    m_rMesh.m_vecControlPoints.resize(m_rMesh.m_vecControlPoints.size() / 3 * 3);
    if (!ReadPolygons(rRecord))
    {
        return false;
    }
    ReadLayerElements(rRecord);
    RemoveDroppedPolygons();
    return true;
}

bool CFBXMeshReader::ReadPolygons(const CFBXRecord& rRecord)
{
    std::vector<int32_t>& rVertices = m_rMesh.m_vecPolygonVertices;
    const CFBXRecord* pIndices = rRecord.FindChild("PolygonVertexIndex");
    if (pIndices != nullptr && !pIndices->ReadInts(rVertices))
    {
        return false;
    }
    const size_t uiPoints = m_rMesh.m_vecControlPoints.size() / 3;
    if (rVertices.size() > MAX_POLYGON_VERTICES || uiPoints > MAX_POLYGON_VERTICES)
    {
        Log(FBXSDK, LOG_ERROR, "Mesh %s is too large", m_strDescription);
        return false;
    }
    if (!rVertices.empty() && rVertices.back() >= 0)
    {
        Log(FBXSDK, LOG_WARNING, "Mesh %s does not end its last polygon", m_strDescription);
        rVertices.back() = ~rVertices.back();
    }

    std::vector<int32_t>& rStarts = m_rMesh.m_vecPolygonStarts;
    rStarts.reserve(static_cast<size_t>(
                        std::count_if(rVertices.begin(), rVertices.end(), [](int32_t n) { return n < 0; })) +
                    1);
    std::vector<size_t> vecBad; // polygons
    for (size_t n = 0; n < rVertices.size(); ++n)
    {
        const bool bLast = rVertices[n] < 0;
        rVertices[n] = bLast ? ~rVertices[n] : rVertices[n];
        if (static_cast<size_t>(rVertices[n]) >= uiPoints)
        {
            rVertices[n] = 0;
            vecBad.push_back(rStarts.size() - 1);
        }
        if (bLast)
        {
            rStarts.push_back(static_cast<int32_t>(n + 1));
        }
    }
    if (!vecBad.empty())
    {
        m_vecDropped.resize(rStarts.size() - 1);
        for (const size_t uiPolygon : vecBad)
        {
            m_vecDropped[uiPolygon] = true;
        }
        Log(FBXSDK, LOG_WARNING,
            "Mesh %s: leaving out polygons; their corners name %llu points that it does not have",
            m_strDescription, vecBad.size());
    }
    return true;
}

void CFBXMeshReader::ReadLayerElements(const CFBXRecord& rRecord)
{
    const FbxLayerElement::CCounts objCounts = m_rMesh.GetCounts();
    if (objCounts.m_uiPolygons == 0)
    {
        return;
    }
    const auto Add = [&](FbxLayerElement::EType eType, const CFBXRecord& rElement) {
        if (HasRoom(eType))
        {
            AddElement(FbxLayerElement::Read(eType, rElement, objCounts));
        }
    };
    bool bOldMaterials = false;
    for (const CFBXRecord& rChild : rRecord.GetChildren())
    {
        const std::string_view strName = rChild.GetName();
        if (strName == "LayerElementNormal")
        {
            Add(FbxLayerElement::eNormal, rChild);
        }
        else if (strName == "LayerElementUV")
        {
            Add(FbxLayerElement::eUV, rChild);
        }
        else if (strName == "LayerElementColor")
        {
            Add(FbxLayerElement::eVertexColor, rChild);
        }
        else if (strName == "LayerElementMaterial" && m_rMesh.m_vecMaterials.empty())
        {
            ReadMaterials(rChild, rChild.GetChildString("MappingInformationType"));
        }
        else if (strName == "LayerElementHole")
        {
            ReadHoles(rChild);
        }
        else if (strName == "Normals" && HasRoom(FbxLayerElement::eNormal))
        {
            ReadOldNormals(rChild);
        }
        else if (strName == "GeometryUVInfo" && HasRoom(FbxLayerElement::eUV))
        {
            ReadOldUVs(rChild);
        }
        else if (strName == "MaterialAssignation" && !std::exchange(bOldMaterials, true))
        {
            ReadMaterials(rRecord, rChild.GetString(0));
        }
    }
    for (const CFBXRecord& rChild : rRecord.GetChildren())
    {
        // "LayerElementBumpUV" and so on repeat the set that the texture takes.
        const std::string_view strName = rChild.GetName();
        if (strName.starts_with("LayerElement") && strName.ends_with("UV") && strName != "LayerElementUV" &&
            m_rMesh.FindElementUV(LimitFBXName(rChild.GetChildString("Name"))) < 0)
        {
            Add(FbxLayerElement::eUV, rChild);
        }
    }
}

bool CFBXMeshReader::HasRoom(FbxLayerElement::EType eType)
{
    if (m_rMesh.m_arrElements[eType].size() < MAX_ELEMENTS)
    {
        return true;
    }
    if (!std::exchange(m_bToldOfElements, true))
    {
        Log(FBXSDK, LOG_WARNING, "Mesh %s has more than %d layer elements of a kind: the rest is left out",
            m_strDescription, static_cast<int>(MAX_ELEMENTS));
    }
    return false;
}

void CFBXMeshReader::AddElement(std::optional<FbxLayerElement>&& objElement)
{
    if (objElement)
    {
        m_rMesh.m_arrElements[objElement->GetType()].push_back(std::move(*objElement));
    }
}

void CFBXMeshReader::ReadMaterials(const CFBXRecord& rRecord, std::string_view strMapping)
{
    std::vector<int32_t>& rMaterials = m_rMesh.m_vecMaterials;
    const CFBXRecord* pMaterials = rRecord.FindChild("Materials");
    if (pMaterials == nullptr || !pMaterials->ReadInts(rMaterials) || rMaterials.empty())
    {
        return;
    }
    const FbxLayerElement::EMappingMode eMode = FbxLayerElement::GetMappingMode(strMapping);
    if (eMode != FbxLayerElement::eByPolygon)
    {
        if (eMode != FbxLayerElement::eAllSame && eMode != FbxLayerElement::eNone)
        {
            Log(FBXSDK, LOG_WARNING, "Mesh %s has its materials mapped '%s': all polygons get the first one",
                m_strDescription, CQDString(strMapping));
        }
        rMaterials.resize(1);
    }
    else if (rMaterials.size() > 1)
    {
        rMaterials.resize(m_rMesh.m_vecPolygonStarts.size() - 1, 0);
    }
}

void CFBXMeshReader::ReadHoles(const CFBXRecord& rRecord)
{
    std::vector<int32_t> vecHoles;
    const CFBXRecord* pHoles = rRecord.FindChild("Hole");
    if (pHoles == nullptr || !pHoles->ReadInts(vecHoles))
    {
        return;
    }
    m_vecDropped.resize(m_rMesh.m_vecPolygonStarts.size() - 1);
    for (size_t n = 0; n < std::min(vecHoles.size(), m_vecDropped.size()); ++n)
    {
        m_vecDropped[n] = m_vecDropped[n] || vecHoles[n] != 0;
    }
}

void CFBXMeshReader::ReadOldNormals(const CFBXRecord& rRecord)
{
    std::vector<float> vecNormals;
    if (!rRecord.ReadFloats(vecNormals) || vecNormals.empty())
    {
        return;
    }
    // Whose they are is not written: only their number tells.
    const FbxLayerElement::CCounts objCounts = m_rMesh.GetCounts();
    const bool bControlPoints = vecNormals.size() == objCounts.m_uiControlPoints * 3;
    AddElement(FbxLayerElement::Create(FbxLayerElement::eNormal, CQDString(),
                                       bControlPoints ? FbxLayerElement::eByControlPoint
                                                      : FbxLayerElement::eByPolygonVertex,
                                       std::move(vecNormals), {}, objCounts, rRecord.Describe()));
}

void CFBXMeshReader::ReadOldUVs(const CFBXRecord& rRecord)
{
    std::vector<float> vecUVs;
    std::vector<int32_t> vecIndices;
    const CFBXRecord* pUVs = rRecord.FindChild("TextureUV");
    const CFBXRecord* pIndices = rRecord.FindChild("TextureUVVerticeIndex");
    if (pUVs == nullptr || !pUVs->ReadFloats(vecUVs) || vecUVs.empty() ||
        (pIndices != nullptr && !pIndices->ReadInts(vecIndices)))
    {
        return;
    }
    // "ByPolygon" is what these files call one for each corner of a polygon.
    FbxLayerElement::EMappingMode eMode =
        FbxLayerElement::GetMappingMode(rRecord.GetChildString("MappingInformationType"));
    if (eMode == FbxLayerElement::eByPolygon)
    {
        eMode = FbxLayerElement::eByPolygonVertex;
    }
    AddElement(FbxLayerElement::Create(FbxLayerElement::eUV, CQDString(), eMode, std::move(vecUVs),
                                       std::move(vecIndices), m_rMesh.GetCounts(), rRecord.Describe()));
}

void CFBXMeshReader::RemoveDroppedPolygons()
{
    if (std::find(m_vecDropped.begin(), m_vecDropped.end(), true) == m_vecDropped.end())
    {
        return;
    }
    std::vector<int32_t> vecStarts{0};
    std::vector<int32_t> vecPolygons;
    std::vector<int32_t> vecCorners;
    for (int32_t nPolygon = 0; nPolygon < m_rMesh.GetPolygonCount(); ++nPolygon)
    {
        if (!m_vecDropped[static_cast<size_t>(nPolygon)])
        {
            for (int32_t n = m_rMesh.GetPolygonStart(nPolygon); n < m_rMesh.GetPolygonStart(nPolygon + 1);
                 ++n)
            {
                vecCorners.push_back(n);
            }
            vecPolygons.push_back(nPolygon);
            vecStarts.push_back(static_cast<int32_t>(vecCorners.size()));
        }
    }
    m_rMesh.Remap(std::move(vecStarts), vecPolygons, vecCorners);
}
