#include "qdscenegraph/geometry/CSGVertexBuffer.h"

#include "qdcommon/CStream.h"

#include <algorithm>

namespace
{
const SGStreamableRegistration<CSGVertexBuffer> s_objRegistration(0x3853C0EB565ED313, 1, 1);
}

boost::intrusive_ptr<CSGVertexBuffer> CSGVertexBuffer::Create(const CSGVertexFormat& rFormat,
                                                              int32_t nVertices)
{
    QD_CHECK(nVertices >= 0, nullptr);
    boost::intrusive_ptr<CSGVertexBuffer> spBuffer = CSGMem::Construct<CSGVertexBuffer>();
    QD_CHECK_CREATED(spBuffer, nullptr);
    spBuffer->m_objFormat = rFormat;
    QD_CHECK_CALL(spBuffer->Allocate(nVertices), nullptr);
    std::ranges::fill(spBuffer->m_vecData, 0.0f);
    return spBuffer;
}

bool CSGVertexBuffer::Allocate(int32_t nVertices)
{
    // Vertices that take no memory could be there in any number, at the cost of whoever walks them.
    QD_CHECK(nVertices == 0 || m_objFormat.GetFloatsPerVertex() > 0, false);
    QD_CHECK_CALL(TryResize(m_vecData, GetFloatIndex(nVertices, 0)), false);
    m_nVertices = nVertices;
    return true;
}

size_t CSGVertexBuffer::GetFloatIndex(int32_t nVertex, int32_t nOffset) const
{
    return static_cast<size_t>(nVertex) * static_cast<size_t>(m_objFormat.GetFloatsPerVertex()) +
           static_cast<size_t>(nOffset);
}

const CSGVertexFormat::CMember* CSGVertexBuffer::FindVertMember(int32_t nVertex,
                                                                CSGVertexFormat::EMember eMember,
                                                                int32_t nSet) const
{
    return nVertex >= 0 && nVertex < m_nVertices ? m_objFormat.FindMember(eMember, nSet) : nullptr;
}

bool CSGVertexBuffer::SetVertMemberData(int32_t nVertex, CSGVertexFormat::EMember eMember, int32_t nSet,
                                        const float* pData, int32_t nFloats)
{
    QD_CHECK_ARG(pData, false);
    const CSGVertexFormat::CMember* pMember = FindVertMember(nVertex, eMember, nSet);
    if (pMember == nullptr || pMember->m_nFloats != nFloats)
    {
        return false;
    }
    std::copy_n(pData, nFloats, &m_vecData[GetFloatIndex(nVertex, pMember->m_nOffset)]);
    m_objEditStamp.Renew();
    return true;
}

bool CSGVertexBuffer::SetVertColor(int32_t nVertex, int32_t nSet, const CColor& rColor)
{
    const float arrColor[4] = {rColor.r, rColor.g, rColor.b, rColor.a};
    return SetVertMemberData(nVertex, CSGVertexFormat::MEMBER_COLOR, nSet, arrColor, 4);
}

const float* CSGVertexBuffer::GetVertMemberData(int32_t nVertex, CSGVertexFormat::EMember eMember,
                                                int32_t nSet) const
{
    const CSGVertexFormat::CMember* pMember = FindVertMember(nVertex, eMember, nSet);
    return pMember != nullptr ? &m_vecData[GetFloatIndex(nVertex, pMember->m_nOffset)] : nullptr;
}

std::span<float> CSGVertexBuffer::EditData()
{
    m_objEditStamp.Renew();
    return m_vecData;
}

bool CSGVertexBuffer::ReadFromStream(CStream* pStream, CSGStreamableLoadState*)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_CALL(m_objFormat.ReadFromStream(pStream), false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nVertices = pStream->ReadInt32();
    const int64_t nBytesEach = m_objFormat.GetFloatsPerVertex() * static_cast<int64_t>(sizeof(float));
    QD_CHECK(nVertices == 0 || (nBytesEach > 0 && pStream->CanRead(nVertices, nBytesEach)), false);
    QD_CHECK_CALL(Allocate(nVertices), false);
    pStream->Read(m_vecData.data(), m_vecData.size() * sizeof(float));
    m_objEditStamp.Renew();
    return true;
}

bool CSGVertexBuffer::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_CALL(m_objFormat.WriteToStream(pStream), false);
    pStream->WriteInt32(m_nVertices);
    return pStream->Write(m_vecData.data(), m_vecData.size() * sizeof(float));
}

void CSGVertexBuffer::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGVertexBuffer: 0x%08llX - Vertices: %d - Format: %s", rIndent,
        LogAddress(this), m_nVertices, m_objFormat.GetDescription());
}
