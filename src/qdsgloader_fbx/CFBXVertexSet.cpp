#include "qdsgloader_fbx/CFBXVertexSet.h"

#include <algorithm>
#include <cstring>

namespace
{

// More vertices of one control point than that are looked up, not looked through.
constexpr int MAX_LINKED = 16;
constexpr size_t POSITION_SIZE = 3;

size_t CountInts(std::span<const FbxLayerElement* const> arrElements)
{
    size_t nInts = 1 + POSITION_SIZE;
    for (const FbxLayerElement* pElement : arrElements)
    {
        nInts += static_cast<size_t>(pElement->GetValueSize());
    }
    return nInts;
}

} // namespace

CFBXVertexSet::CFBXVertexSet(const FbxMesh& rMesh, std::vector<const FbxLayerElement*> vecElements)
    : m_rMesh(rMesh),
      m_arrControlPoints(rMesh.GetPolygonVertices()),
      m_vecElements(std::move(vecElements)),
      m_vecNewest(rMesh.GetControlPoints().size() / POSITION_SIZE, -1),
      m_vecTuple(CountInts(m_vecElements)),
      m_objCrowded(static_cast<int32_t>(m_vecTuple.size()))
{}

int32_t CFBXVertexSet::Insert(int32_t nCorner)
{
    int32_t& rnNewest = m_vecNewest[static_cast<size_t>(GetControlPoint(nCorner))];
    int nLinked = 0;
    for (int32_t n = rnNewest; n >= 0; n = m_vecOlder[static_cast<size_t>(n)])
    {
        if (AreSame(m_vecCorners[static_cast<size_t>(n)], nCorner))
        {
            return n;
        }
        ++nLinked;
    }
    return nLinked < MAX_LINKED ? rnNewest = Add(nCorner, rnNewest) : InsertCrowded(nCorner);
}

int32_t CFBXVertexSet::InsertCrowded(int32_t nCorner)
{
    std::vector<float> vecFloats(m_vecTuple.size() - 1);
    CopyFloats(nCorner, vecFloats.data());
    m_vecTuple[0] = GetControlPoint(nCorner);
    std::memcpy(&m_vecTuple[1], vecFloats.data(), vecFloats.size() * sizeof(float));
    const auto nNumber = static_cast<size_t>(m_objCrowded.Insert(m_vecTuple.data()));
    if (nNumber == m_vecCrowded.size())
    {
        m_vecCrowded.push_back(Add(nCorner, -1));
    }
    return m_vecCrowded[nNumber];
}

int32_t CFBXVertexSet::Add(int32_t nCorner, int32_t nOlder)
{
    m_vecCorners.push_back(nCorner);
    m_vecOlder.push_back(nOlder);
    return static_cast<int32_t>(m_vecCorners.size()) - 1;
}

const float* CFBXVertexSet::GetValue(const FbxLayerElement& rElement, int32_t nCorner) const
{
    return rElement.GetValue(rElement.GetIndex(nCorner / 3, nCorner, GetControlPoint(nCorner)));
}

bool CFBXVertexSet::AreSame(int32_t nCorner, int32_t nOther) const
{
    return std::ranges::all_of(m_vecElements, [&](const FbxLayerElement* pElement) {
        const float* pfValue = GetValue(*pElement, nCorner);
        const float* pfOther = GetValue(*pElement, nOther);
        return pfValue == pfOther ||
               std::memcmp(pfValue, pfOther, static_cast<size_t>(pElement->GetValueSize()) * sizeof(float)) ==
                   0;
    });
}

float* CFBXVertexSet::CopyFloats(int32_t nCorner, float* pfTo) const
{
    const double* pdPosition =
        m_rMesh.GetControlPoints().data() + POSITION_SIZE * static_cast<size_t>(GetControlPoint(nCorner));
    pfTo = std::transform(pdPosition, pdPosition + POSITION_SIZE, pfTo,
                          [](double d) { return static_cast<float>(d); });
    for (const FbxLayerElement* pElement : m_vecElements)
    {
        pfTo = std::copy_n(GetValue(*pElement, nCorner), pElement->GetValueSize(), pfTo);
    }
    return pfTo;
}

void CFBXVertexSet::Clear()
{
    for (const int32_t nCorner : m_vecCorners)
    {
        m_vecNewest[static_cast<size_t>(GetControlPoint(nCorner))] = -1;
    }
    m_vecCorners.clear();
    m_vecOlder.clear();
    m_objCrowded.TakeTuples();
    m_vecCrowded.clear();
}
