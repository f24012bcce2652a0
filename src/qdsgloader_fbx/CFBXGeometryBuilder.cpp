#include "qdsgloader_fbx/CFBXGeometryBuilder.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CIndexTupleSet.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/geometry/CSGGeom_Triangles.h"

#include <algorithm>
#include <bit>

CFBXGeometryBuilder::CFBXGeometryBuilder(const FbxMesh& rMesh, int32_t nMaterialCount)
    : m_rMesh(rMesh),
      m_nMaterialCount(nMaterialCount)
{}

bool CFBXGeometryBuilder::BuildGeometry()
{
    QD_CHECK(m_rMesh.IsTriangleMesh(), false);
    QD_CHECK_CALL(MakeFormat(), false);
    QD_CHECK_CALL(SortPolygonsByMaterial(), false);
    m_vecPieces.resize(static_cast<size_t>(m_nMaterialCount));
    for (size_t n = 0; n < m_vecPieces.size(); ++n)
    {
        const auto arrPolygons =
            std::span<const int32_t>(m_vecPolygons)
                .subspan(m_vecPieceBegins[n], m_vecPieceBegins[n + 1] - m_vecPieceBegins[n]);
        QD_CHECK_CALL(arrPolygons.empty() || BuildPiece(m_vecPieces[n], arrPolygons), false);
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
    if (pNormals != nullptr && !AddElement(*pNormals, CSGVertexFormat::MEMBER_NORMAL, 0, 3))
    {
        return false;
    }
    int32_t nSet = 0;
    for (const FbxLayerElement& rElement : m_rMesh.GetElements(FbxLayerElement::eUV))
    {
        if (!AddElement(rElement, CSGVertexFormat::MEMBER_TEXCOORD, nSet++, 2))
        {
            return false;
        }
    }
    nSet = 0;
    for (const FbxLayerElement& rElement : m_rMesh.GetElements(FbxLayerElement::eVertexColor))
    {
        if (!AddElement(rElement, CSGVertexFormat::MEMBER_COLOR, nSet++, 4))
        {
            return false;
        }
    }
    return true;
}

bool CFBXGeometryBuilder::AddElement(const FbxLayerElement& rElement, CSGVertexFormat::EMember eMember,
                                     int32_t nSet, size_t nFloats)
{
    m_vecSources.push_back({&rElement, nFloats});
    return m_objFormat.AddMemberN(eMember, nSet, static_cast<int32_t>(nFloats));
}

bool CFBXGeometryBuilder::SortPolygonsByMaterial()
{
    // A counting sort, which keeps the polygons of one material in their order.
    const int32_t nPolygons = m_rMesh.GetPolygonCount();
    m_vecPieceBegins.assign(static_cast<size_t>(m_nMaterialCount) + 1, 0);
    for (int32_t n = 0; n < nPolygons; ++n)
    {
        const int32_t nMaterial = m_rMesh.GetMaterialIndex(n);
        QD_ASSERT(nMaterial >= 0, false);
        QD_ASSERT(nMaterial < m_nMaterialCount, false);
        ++m_vecPieceBegins[static_cast<size_t>(nMaterial) + 1];
    }
    for (size_t n = 1; n < m_vecPieceBegins.size(); ++n)
    {
        m_vecPieceBegins[n] += m_vecPieceBegins[n - 1];
    }
    std::vector<size_t> vecNext = m_vecPieceBegins;
    m_vecPolygons.resize(static_cast<size_t>(nPolygons));
    for (int32_t n = 0; n < nPolygons; ++n)
    {
        m_vecPolygons[vecNext[static_cast<size_t>(m_rMesh.GetMaterialIndex(n))]++] = n;
    }
    return true;
}

void CFBXGeometryBuilder::GetVertex(int32_t nPolygon, int32_t nCorner, int32_t* pnVertex) const
{
    const int32_t nControlPoint = m_rMesh.GetPolygonVertices()[static_cast<size_t>(nCorner)];
    const auto AddFloats = [&](const double* pdValues, size_t nFloats) {
        pnVertex = std::transform(pdValues, pdValues + nFloats, pnVertex,
                                  [](double d) { return std::bit_cast<int32_t>(static_cast<float>(d)); });
    };
    *pnVertex++ = nControlPoint;
    AddFloats(m_rMesh.GetControlPoints().data() + 3 * static_cast<size_t>(nControlPoint), 3);
    for (const CSource& rSource : m_vecSources)
    {
        AddFloats(
            rSource.m_pElement->GetValue(rSource.m_pElement->GetIndex(nPolygon, nCorner, nControlPoint)),
            rSource.m_nFloats);
    }
}

bool CFBXGeometryBuilder::BuildPiece(CPiece& rPiece, std::span<const int32_t> arrPolygons) const
{
    const auto nFloats = static_cast<size_t>(m_objFormat.GetFloatsPerVertex());
    std::vector<int32_t> vecVertex(1 + nFloats); // the control point, then the floats' bits
    CIndexTupleSet objVertices(static_cast<int32_t>(vecVertex.size()));
    std::vector<int32_t> vecIndices;
    vecIndices.reserve(3 * arrPolygons.size());
    for (const int32_t nPolygon : arrPolygons)
    {
        for (int32_t n = 0; n < 3; ++n)
        {
            GetVertex(nPolygon, m_rMesh.GetPolygonStart(nPolygon) + n, vecVertex.data());
            vecIndices.push_back(objVertices.Insert(vecVertex.data()));
        }
    }
    const int32_t nVertices = objVertices.GetCount();
    const auto spVertices = CSGVertexBuffer::Create(m_objFormat, nVertices);
    QD_CHECK_CREATED(spVertices, false);
    const std::vector<int32_t> vecTuples = objVertices.TakeTuples();
    rPiece.m_vecControlPoints.reserve(static_cast<size_t>(nVertices));
    auto itFloat = spVertices->EditData().begin();
    for (size_t n = 0; n < vecTuples.size(); n += vecVertex.size())
    {
        rPiece.m_vecControlPoints.push_back(vecTuples[n]);
        itFloat = std::transform(&vecTuples[n + 1], &vecTuples[n + 1] + nFloats, itFloat,
                                 [](int32_t nBits) { return std::bit_cast<float>(nBits); });
    }
    const auto spIndices = CSGIndexBuffer::Create(0, nVertices - 1);
    QD_CHECK_CREATED(spIndices, false);
    QD_CHECK_CALL(spIndices->AddIndices(vecIndices), false);
    rPiece.m_spBinding = CSGGeomBinding::Create(CSGGeom_Triangles::Create(spIndices), spVertices);
    QD_CHECK_CREATED(rPiece.m_spBinding, false);
    return true;
}
