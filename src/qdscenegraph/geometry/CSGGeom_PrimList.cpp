#include "qdscenegraph/geometry/CSGGeom_PrimList.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/geometry/CSGBulkArray.h"
#include "qdscenegraph/geometry/CSGPrim_Polygon.h"
#include "qdscenegraph/geometry/CSGPrim_Quad.h"
#include "qdscenegraph/geometry/CSGPrim_Triangle.h"

#include <algorithm>

CSGTypeInfo<CSGGeom> CSGGeom_PrimList::ms_objTypeInfo(CSGGeom_PrimList::SG_TYPE_NAME);

namespace
{

const SGStreamableRegistration<CSGGeom_PrimList> s_objRegistration(0xD0E15568950A4264, 1, 1);

// The kinds of primitives; the place of each is its number in files.
struct CKind
{
    const CSGTypeInfo<CSGPrimitive>* pTypeInfo;
    boost::intrusive_ptr<CSGPrimitive> (*fnCreate)(std::span<const int32_t>);
};
constexpr CKind KINDS[] = {{&CSGPrim_Triangle::ms_objTypeInfo, CSGPrim_Triangle::Create},
                           {&CSGPrim_Quad::ms_objTypeInfo, CSGPrim_Quad::Create},
                           {&CSGPrim_Polygon::ms_objTypeInfo, CSGPrim_Polygon::Create}};
constexpr int32_t NUM_KINDS = std::size(KINDS);

constexpr int64_t SMALLEST_PRIMITIVE_RECORD = 5 * sizeof(int32_t);

} // namespace

boost::intrusive_ptr<CSGGeom_PrimList> CSGGeom_PrimList::Create()
{
    return CSGMem::Construct<CSGGeom_PrimList>();
}

bool CSGGeom_PrimList::AddPrimitive(const boost::intrusive_ptr<CSGPrimitive>& spPrimitive)
{
    QD_CHECK_ARG(spPrimitive, false);
    m_vecPrimitives.push_back(spPrimitive);
    m_nMaxIndex = std::max(m_nMaxIndex, spPrimitive->GetMaxIndex());
    m_nTriangles += spPrimitive->GetNumIndices() - 2;
    return true;
}

CSGPrimitive* CSGGeom_PrimList::GetPrimitive(int32_t nPrimitive) const
{
    return nPrimitive >= 0 && nPrimitive < GetNumPrimitives()
               ? m_vecPrimitives[static_cast<size_t>(nPrimitive)].get()
               : nullptr;
}

bool CSGGeom_PrimList::ReadFromStream(CStream* pStream, CSGStreamableLoadState*)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nPrimitives = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nPrimitives, SMALLEST_PRIMITIVE_RECORD), false);
    m_vecPrimitives.reserve(static_cast<size_t>(nPrimitives));
    CSGBulkArray<int32_t> vecIndices;
    for (int32_t n = 0; n < nPrimitives; ++n)
    {
        QD_CHECK(pStream->CanRead(2, sizeof(int32_t)), false);
        const int32_t nKind = pStream->ReadInt32();
        const int32_t nIndices = pStream->ReadInt32();
        QD_CHECK(nKind >= 0 && nKind < NUM_KINDS, false);
        QD_CHECK(pStream->CanRead(nIndices, sizeof(int32_t)), false);
        QD_CHECK_CALL(TryResize(vecIndices, static_cast<size_t>(nIndices)), false);
        pStream->Read(vecIndices.data(), vecIndices.size() * sizeof(int32_t));
        QD_CHECK_CALL(AddPrimitive(KINDS[nKind].fnCreate(vecIndices)), false);
    }
    return true;
}

bool CSGGeom_PrimList::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    pStream->WriteInt32(GetNumPrimitives());
    for (const auto& spPrimitive : m_vecPrimitives)
    {
        const CKind* pKind = std::ranges::find(KINDS, spPrimitive->GetTypeInfo(), &CKind::pTypeInfo);
        QD_CHECK(pKind != std::end(KINDS), false);
        const std::span<const int32_t> arrIndices = spPrimitive->GetIndices();
        pStream->WriteInt32(static_cast<int32_t>(pKind - KINDS));
        pStream->WriteInt32(spPrimitive->GetNumIndices());
        pStream->Write(arrIndices.data(), arrIndices.size_bytes());
    }
    return pStream->IsGood();
}

void CSGGeom_PrimList::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGGeom_PrimList: 0x%08llX - Primitives: %d", rIndent, LogAddress(this),
        GetNumPrimitives());
}
