#include "fbxsdk/geometry/FbxMesh.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/geometry/CFBXMeshReader.h"
#include "fbxsdk/geometry/CFBXTriangulator.h"
#include "fbxsdk/geometry/FbxSkin.h"
#include "qdcommon/CLog.h"

std::unique_ptr<FbxMesh> FbxMesh::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    std::unique_ptr<FbxMesh> spMesh(new FbxMesh(rObject));
    return CFBXMeshReader(*spMesh).Read(rObject) ? std::move(spMesh) : nullptr;
}

std::unique_ptr<FbxMesh> FbxMesh::Create(const FbxGeometry& rOriginal, CParts&& rParts)
{
    std::unique_ptr<FbxMesh> spMesh(new FbxMesh(rOriginal));
    if (rOriginal.GetSrcObjects<FbxSkin>().empty())
    {
        spMesh->TakeLinksOf(rOriginal);
    }
    else
    {
        Log(FBXSDK, LOG_WARNING, "Surface '%s' does not follow its skin", rOriginal.GetName());
    }
    spMesh->m_vecControlPoints = std::move(rParts.m_vecControlPoints);
    spMesh->m_vecPolygonVertices = std::move(rParts.m_vecPolygonVertices);
    spMesh->m_vecPolygonStarts = std::move(rParts.m_vecPolygonStarts);
    spMesh->m_vecMaterials = std::move(rParts.m_vecMaterials);
    for (FbxLayerElement& rElement : rParts.m_vecElements)
    {
        spMesh->m_arrElements[rElement.GetType()].push_back(std::move(rElement));
    }
    return spMesh;
}

bool FbxMesh::IsTriangleMesh() const
{
    for (size_t n = 0; n < m_vecPolygonStarts.size(); ++n)
    {
        if (m_vecPolygonStarts[n] != static_cast<int64_t>(n) * 3)
        {
            return false;
        }
    }
    return true;
}

const FbxLayerElement* FbxMesh::GetElement(FbxLayerElement::EType eType, int32_t n) const
{
    return n >= 0 && n < GetElementCount(eType) ? &m_arrElements[eType][static_cast<size_t>(n)] : nullptr;
}

int32_t FbxMesh::FindElementUV(std::string_view strName) const
{
    for (int32_t n = 0; n < GetElementUVCount(); ++n)
    {
        if (GetElementUV(n)->GetName() == strName)
        {
            return n;
        }
    }
    return -1;
}

FbxLayerElement::CCounts FbxMesh::GetCounts() const
{
    return {m_vecControlPoints.size() / 3, m_vecPolygonVertices.size(), m_vecPolygonStarts.size() - 1};
}

void FbxMesh::Triangulate()
{
    CFBXTriangulator objTriangulator;
    Triangulate(objTriangulator);
}

void FbxMesh::Triangulate(CFBXTriangulator& rTriangulator)
{
    if (IsTriangleMesh())
    {
        return;
    }
    std::vector<int32_t> vecCorners;
    vecCorners.reserve(m_vecPolygonVertices.size() * 3 / 2);
    std::vector<int32_t> vecPolygons;
    vecPolygons.reserve(m_vecPolygonVertices.size() / 2);
    const std::span<const int32_t> arrPolygonVertices = m_vecPolygonVertices;
    for (int32_t nPolygon = 0; nPolygon < GetPolygonCount(); ++nPolygon)
    {
        const int32_t nStart = GetPolygonStart(nPolygon);
        rTriangulator.Triangulate(m_vecControlPoints,
                                  arrPolygonVertices.subspan(static_cast<size_t>(nStart),
                                                             static_cast<size_t>(GetPolygonSize(nPolygon))),
                                  nStart, vecCorners);
        vecPolygons.resize(vecCorners.size() / 3, nPolygon);
    }
    std::vector<int32_t> vecStarts(vecPolygons.size() + 1);
    for (size_t n = 0; n < vecStarts.size(); ++n)
    {
        vecStarts[n] = static_cast<int32_t>(n * 3);
    }
    Remap(std::move(vecStarts), vecPolygons, vecCorners);
}

void FbxMesh::Remap(std::vector<int32_t>&& vecStarts, std::span<const int32_t> arrPolygons,
                    std::span<const int32_t> arrPolygonVertices)
{
    const auto Gather = [](std::vector<int32_t>& rValues, std::span<const int32_t> arrFrom) {
        std::vector<int32_t> vecValues(arrFrom.begin(), arrFrom.end());
        for (int32_t& rValue : vecValues)
        {
            rValue = rValues[static_cast<size_t>(rValue)];
        }
        rValues = std::move(vecValues);
    };
    Gather(m_vecPolygonVertices, arrPolygonVertices);
    if (m_vecMaterials.size() > 1)
    {
        Gather(m_vecMaterials, arrPolygons);
    }
    for (std::vector<FbxLayerElement>& rElements : m_arrElements)
    {
        for (FbxLayerElement& rElement : rElements)
        {
            rElement.Remap(arrPolygons, arrPolygonVertices);
        }
    }
    m_vecPolygonStarts = std::move(vecStarts);
}
