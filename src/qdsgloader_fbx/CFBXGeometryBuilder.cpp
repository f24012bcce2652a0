#include "qdsgloader_fbx/CFBXGeometryBuilder.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/geometry/CSGGeom_Triangles.h"
#include "qdsgloader_fbx/CFBXVertexSet.h"

#include <algorithm>

CFBXGeometryBuilder::CFBXGeometryBuilder(const FbxMesh& rMesh, std::vector<int32_t> vecMaterials,
                                         int32_t nMaterialCount)
    : m_rMesh(rMesh),
      m_vecMaterials(std::move(vecMaterials)),
      m_nMaterialCount(nMaterialCount)
{}

bool CFBXGeometryBuilder::BuildGeometry()
{
    QD_CHECK(m_rMesh.IsTriangleMesh(), false);
    QD_CHECK_CALL(MakeFormat(), false);
    QD_CHECK_CALL(SortPolygonsByMaterial(), false);
    CFBXVertexSet objVertexSet(m_rMesh, m_vecElements);
    m_vecPieces.resize(static_cast<size_t>(m_nMaterialCount));
    for (size_t n = 0; n < m_vecPieces.size(); ++n)
    {
        const auto arrPolygons =
            std::span<const int32_t>(m_vecPolygons)
                .subspan(m_vecPieceBegins[n], m_vecPieceBegins[n + 1] - m_vecPieceBegins[n]);
        QD_CHECK_CALL(arrPolygons.empty() || BuildPiece(m_vecPieces[n], arrPolygons, objVertexSet), false);
    }
    return true;
}

bool CFBXGeometryBuilder::MakeFormat()
{
    if (!m_objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3))
    {
        return false;
    }
    const FbxLayerElement* pNormals = m_rMesh.GetElementNormal();
    if (pNormals != nullptr && !AddElement(*pNormals, CSGVertexFormat::MEMBER_NORMAL, 0))
    {
        return false;
    }
    int32_t nSet = 0;
    for (const FbxLayerElement& rElement : m_rMesh.GetElements(FbxLayerElement::eUV))
    {
        if (!AddElement(rElement, CSGVertexFormat::MEMBER_TEXCOORD, nSet++))
        {
            return false;
        }
    }
    nSet = 0;
    for (const FbxLayerElement& rElement : m_rMesh.GetElements(FbxLayerElement::eVertexColor))
    {
        if (!AddElement(rElement, CSGVertexFormat::MEMBER_COLOR, nSet++))
        {
            return false;
        }
    }
    return true;
}

bool CFBXGeometryBuilder::AddElement(const FbxLayerElement& rElement, CSGVertexFormat::EMember eMember,
                                     int32_t nSet)
{
    m_vecElements.push_back(&rElement);
    return m_objFormat.AddMemberN(eMember, nSet, rElement.GetValueSize());
}

bool CFBXGeometryBuilder::SortPolygonsByMaterial()
{
    // A counting sort, which keeps the polygons of one material in their order.
    QD_ASSERT(m_vecMaterials.size() == static_cast<size_t>(m_rMesh.GetPolygonCount()), false);
    m_vecPieceBegins.assign(static_cast<size_t>(m_nMaterialCount) + 1, 0);
    for (const int32_t nMaterial : m_vecMaterials)
    {
        QD_ASSERT(nMaterial >= 0, false);
        QD_ASSERT(nMaterial < m_nMaterialCount, false);
        ++m_vecPieceBegins[static_cast<size_t>(nMaterial) + 1];
    }
    for (size_t n = 1; n < m_vecPieceBegins.size(); ++n)
    {
        m_vecPieceBegins[n] += m_vecPieceBegins[n - 1];
    }
    std::vector<size_t> vecNext = m_vecPieceBegins;
    m_vecPolygons.resize(m_vecMaterials.size());
    for (int32_t n = 0; const int32_t nMaterial : m_vecMaterials)
    {
        m_vecPolygons[vecNext[static_cast<size_t>(nMaterial)]++] = n++;
    }
    return true;
}

bool CFBXGeometryBuilder::BuildPiece(CPiece& rPiece, std::span<const int32_t> arrPolygons,
                                     CFBXVertexSet& rVertexSet) const
{
    std::vector<int32_t> vecIndices;
    vecIndices.reserve(3 * arrPolygons.size());
    for (const int32_t nPolygon : arrPolygons)
    {
        const int32_t nStart = m_rMesh.GetPolygonStart(nPolygon);
        for (int32_t n = nStart; n < nStart + 3; ++n)
        {
            vecIndices.push_back(rVertexSet.Insert(n));
        }
    }
    const auto nVertices = static_cast<int32_t>(rVertexSet.GetCorners().size());
    const auto spVertices = CSGVertexBuffer::Create(m_objFormat, nVertices);
    QD_CHECK_CREATED(spVertices, false);
    rPiece.m_vecControlPoints.reserve(static_cast<size_t>(nVertices));
    float* pfTo = spVertices->EditData().data();
    for (const int32_t nCorner : rVertexSet.GetCorners())
    {
        rPiece.m_vecControlPoints.push_back(rVertexSet.GetControlPoint(nCorner));
        pfTo = rVertexSet.CopyFloats(nCorner, pfTo);
    }
    rVertexSet.Clear();
    const auto spIndices = CSGIndexBuffer::Create(0, nVertices - 1);
    QD_CHECK_CREATED(spIndices, false);
    QD_CHECK_CALL(spIndices->AddIndices(vecIndices), false);
    rPiece.m_spBinding = CSGGeomBinding::Create(CSGGeom_Triangles::Create(spIndices), spVertices);
    QD_CHECK_CREATED(rPiece.m_spBinding, false);
    return true;
}
