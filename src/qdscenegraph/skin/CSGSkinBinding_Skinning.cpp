// The deformed vertices of a skin binding.

#include "qdscenegraph/skin/CSGSkinBinding.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"

#include <cmath>

namespace
{

using CFloat4 [[gnu::vector_size(16)]] = float;

// A transform for row vectors: v' = x * row 0 + y * row 1 + z * row 2 + row 3. The last element of each row
// is not used.
struct CRows
{
    CFloat4 m_arrRows[4];
};

// Three floats of each vertex, wherever they lie.
struct CVectors
{
    const float* m_pFirst = nullptr;
    size_t m_nStride = 0; // in floats
    int32_t m_nFloats = 0;

    CSGFloat3 Get(size_t nVertex) const
    {
        const float* pVector = m_pFirst + nVertex * m_nStride;
        return {pVector[0], m_nFloats > 1 ? pVector[1] : 0.0f, m_nFloats > 2 ? pVector[2] : 0.0f};
    }
};

// False when the vertices have no such member.
bool FindVectors(const CSGVertexBuffer& rBuffer, CSGVertexFormat::EMember eMember, CVectors& rVectors)
{
    const CSGVertexFormat& rFormat = rBuffer.GetFormat();
    const CSGVertexFormat::CMember* pMember = rFormat.FindLowestMember(eMember);
    if (pMember == nullptr)
    {
        return false;
    }
    rVectors = {rBuffer.GetData().data() + pMember->m_nOffset,
                static_cast<size_t>(rFormat.GetFloatsPerVertex()), pMember->m_nFloats};
    return true;
}

std::vector<CRows> GetRows(std::span<const CTransform3> arrPalette)
{
    std::vector<CRows> vecRows(arrPalette.size());
    for (size_t n = 0; n < arrPalette.size(); ++n)
    {
        const auto& [objMatrix, objTranslation] = arrPalette[n];
        for (int nRow = 0; nRow < 3; ++nRow)
        {
            const auto& m = objMatrix.m[nRow];
            vecRows[n].m_arrRows[nRow] = CFloat4{m[0], m[1], m[2], 0.0f};
        }
        vecRows[n].m_arrRows[3] = CFloat4{objTranslation.x, objTranslation.y, objTranslation.z, 0.0f};
    }
    return vecRows;
}

// The elements y, z, x.
CFloat4 Rotate(CFloat4 v) { return __builtin_shufflevector(v, v, 1, 2, 0, 3); }

CFloat4 Cross(CFloat4 a, CFloat4 b) { return Rotate(a * Rotate(b) - Rotate(a) * b); }

float Dot(CFloat4 a, CFloat4 b)
{
    const CFloat4 objProduct = a * b;
    return objProduct[0] + objProduct[1] + objProduct[2];
}

// By the cofactors of the map, which are its inverse transpose but for the factor of its determinant: the
// sign of that turns normals round where the map mirrors.
CFloat4 TransformNormal(const CRows& rMap, const CSGFloat3& rNormal)
{
    const auto& [r0, r1, r2, r3] = rMap.m_arrRows;
    const CFloat4 objCofactor0 = Cross(r1, r2);
    CFloat4 objNormal = rNormal.x * objCofactor0 + rNormal.y * Cross(r2, r0) + rNormal.z * Cross(r0, r1);
    const float fLength = std::sqrt(Dot(objNormal, objNormal));
    const float fScale = fLength > 0.0f ? std::copysign(1.0f / fLength, Dot(r0, objCofactor0)) : 0.0f;
    return objNormal * fScale;
}

void Store(CFloat4 objVector, float* pTo)
{
    pTo[0] = objVector[0];
    pTo[1] = objVector[1];
    pTo[2] = objVector[2];
}

// pNormals is null when only the positions are wanted.
template <bool WITH_NORMALS>
void SkinVertices(const CSGSkinVertexWeights& rWeights, std::span<const CRows> arrPalette,
                  const CVectors& rPositions, float* pPositions, const CVectors& rNormals, float* pNormals)
{
    const std::span<const uint32_t> arrVertexRows = rWeights.GetVertexRows();
    const uint32_t* pRowOffsets = rWeights.GetRowOffsets().data();
    const uint16_t* pJoints = rWeights.GetRowJoints().data();
    const float* pWeights = rWeights.GetRowWeights().data();
    for (size_t nVertex = 0; nVertex < arrVertexRows.size(); ++nVertex)
    {
        const uint32_t uiEnd = pRowOffsets[arrVertexRows[nVertex] + 1];
        uint32_t ui = pRowOffsets[arrVertexRows[nVertex]];
        CRows objBlend = arrPalette.back();
        if (ui < uiEnd)
        {
            objBlend = {};
            for (; ui < uiEnd; ++ui)
            {
                const CRows& rJoint = arrPalette[pJoints[ui]];
                for (int nRow = 0; nRow < 4; ++nRow)
                {
                    objBlend.m_arrRows[nRow] += pWeights[ui] * rJoint.m_arrRows[nRow];
                }
            }
        }
        const CSGFloat3 v = rPositions.Get(nVertex);
        const auto& [r0, r1, r2, r3] = objBlend.m_arrRows;
        Store(v.x * r0 + v.y * r1 + v.z * r2 + r3, pPositions + 3 * nVertex);
        if constexpr (WITH_NORMALS)
        {
            Store(TransformNormal(objBlend, rNormals.Get(nVertex)), pNormals + 3 * nVertex);
        }
    }
}

} // namespace

bool CSGSkinBinding::ComputePalette(std::vector<CTransform3>& rvecPalette) const
{
    const CTransform3& rBindShape = m_spSkin->GetBindShapeTransform();
    QD_CHECK_CALL(TryResize(rvecPalette, m_vecJoints.size() + 1), false);
    rvecPalette.back() = rBindShape;
    for (size_t n = 0; n < m_vecJoints.size(); ++n)
    {
        rvecPalette[n] = rBindShape;
        if (const boost::intrusive_ptr<CSGNode> spNode = m_vecJoints[n].GetNode())
        {
            const auto* pWorld = CSGData_WorldTransform::GetOrCreateFromNode(spNode.get());
            QD_CHECK_NOT_NULL(pWorld, false);
            const CSGJoint* pJoint = m_spSkin->GetJoint(m_vecJoints[n].GetJoint());
            rvecPalette[n] = pWorld->GetTransform() * (pJoint->GetInverseBindTransform() * rBindShape);
        }
    }
    return true;
}

bool CSGSkinBinding::ComputeSkinnedVertices(std::vector<float>& rvecPositions) const
{
    std::vector<CTransform3> vecPalette;
    QD_CHECK_CALL(ComputePalette(vecPalette), false);
    QD_CHECK_CALL(TryResize(rvecPositions, 3 * m_spSkin->GetWeights()->GetVertexRows().size()), false);
    return SkinPositions(vecPalette, rvecPositions);
}

bool CSGSkinBinding::SkinPositions(std::span<const CTransform3> arrPalette,
                                   std::span<float> arrPositions) const
{
    const CSGSkinVertexWeights& rWeights = *m_spSkin->GetWeights();
    QD_CHECK(arrPalette.size() == m_vecJoints.size() + 1, false);
    QD_CHECK(arrPositions.size() == 3 * rWeights.GetVertexRows().size(), false);
    CVectors objPositions;
    if (!FindVectors(*m_spGeomBinding->GetVertexBuffer(), CSGVertexFormat::MEMBER_POSITION, objPositions))
    {
        return false;
    }
    SkinVertices<false>(rWeights, GetRows(arrPalette), objPositions, arrPositions.data(), {}, nullptr);
    return true;
}

bool CSGSkinBinding::ComputeSkinnedVertices(std::vector<float>& rvecPositions,
                                            std::vector<float>& rvecNormals) const
{
    const CSGVertexBuffer& rBuffer = *m_spGeomBinding->GetVertexBuffer();
    CVectors objPositions;
    CVectors objNormals;
    if (!FindVectors(rBuffer, CSGVertexFormat::MEMBER_NORMAL, objNormals) ||
        !FindVectors(rBuffer, CSGVertexFormat::MEMBER_POSITION, objPositions))
    {
        rvecNormals.clear();
        return ComputeSkinnedVertices(rvecPositions);
    }
    std::vector<CTransform3> vecPalette;
    QD_CHECK_CALL(ComputePalette(vecPalette), false);
    const CSGSkinVertexWeights& rWeights = *m_spSkin->GetWeights();
    QD_CHECK_CALL(TryResize(rvecPositions, 3 * rWeights.GetVertexRows().size()), false);
    QD_CHECK_CALL(TryResize(rvecNormals, rvecPositions.size()), false);
    SkinVertices<true>(rWeights, GetRows(vecPalette), objPositions, rvecPositions.data(), objNormals,
                       rvecNormals.data());
    return true;
}
