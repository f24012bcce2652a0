#include "qdsgloader_collada/CDeindexer.h"

#include "qdcommon/CIndexTupleSet.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/geometry/CSGIndexBuffer.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

namespace
{

// Keeps what a document can make us allocate in proportion to its size: every vertex is as large as all
// inputs together.
constexpr int32_t MAX_FLOATS_PER_VERTEX = 128;
// Many primitives may share one <vertices>, and each takes all of its inputs.
constexpr size_t MAX_INPUTS = 256;

int32_t ToIndex(unsigned long long uiValue)
{
    // Negative indices come out of the DOM wrapped round.
    return std::in_range<int32_t>(uiValue)       ? static_cast<int32_t>(uiValue)
           : static_cast<long long>(uiValue) < 0 ? -1
                                                 : std::numeric_limits<int32_t>::max();
}

} // namespace

bool CDeindexer::AddInput(domInputLocalOffset& rInput)
{
    const char* szSemantic = Text(rInput.getSemantic());
    const int32_t nOffset = ToInt32(rInput.getOffset());
    const int32_t nSet = rInput.isAttributeSet("set") ? ToInt32(rInput.getSet()) : 0;
    if (std::string_view(szSemantic) != "VERTEX")
    {
        auto* pSource = CSGLoaderCollada::GetURIElement<domSource>(rInput.getSource());
        if (pSource == nullptr)
        {
            Log(QD_COLLADA, LOG_ERROR, "URI for <input> with \"%s\" semantic referenced NULL <source>.",
                szSemantic);
            return false;
        }
        if (!AddInput(nOffset, szSemantic, nSet, *pSource))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to add input for <input> with \"%s\" semantic.", szSemantic);
            return false;
        }
        Log(QD_COLLADA, LOG_DETAIL, "Added input directly - Offset: %d - Semantic: %s - Set: %d - Source: %s",
            nOffset, szSemantic, nSet, GetIDText(*pSource));
        return true;
    }

    const auto* pVertices = CSGLoaderCollada::GetURIElement<domVertices>(rInput.getSource());
    if (pVertices == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "URI for <input> with \"%s\" semantic referenced NULL <vertices>.",
            szSemantic);
        return false;
    }
    const auto& rVertexInputs = pVertices->getInput_array();
    if (rVertexInputs.getCount() == 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "<vertices> referred to by <input> with semantic \"%s\" had no inputs.",
            szSemantic);
        return false;
    }
    if (m_nOriginalVerticesInput >= 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "Already had original vertices input %d", m_nOriginalVerticesInput);
        return false;
    }
    m_nOriginalVerticesInput = static_cast<int32_t>(m_vecInputs.size());
    for (size_t n = 0; n < rVertexInputs.getCount(); ++n)
    {
        const domInputLocal& rVertexInput = *rVertexInputs[n];
        const char* szVertexSemantic = Text(rVertexInput.getSemantic());
        auto* pSource = CSGLoaderCollada::GetURIElement<domSource>(rVertexInput.getSource());
        if (pSource == nullptr)
        {
            Log(QD_COLLADA, LOG_ERROR,
                "<input> referenced <vertices id=\"%s\"> that had <input> at index %d with NULL source.",
                GetIDText(*pVertices), static_cast<int>(n));
            return false;
        }
        if (!AddInput(nOffset, szVertexSemantic, nSet, *pSource))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to add input for <input> with \"%s\" semantic.", szSemantic);
            return false;
        }
        Log(QD_COLLADA, LOG_DETAIL,
            "Added input via <vertices> - Offset: %d - Semantic: %s - Set: %d - Source: %s", nOffset,
            szVertexSemantic, nSet, GetIDText(*pSource));
    }
    return true;
}

bool CDeindexer::AddInput(int32_t nOffset, const CQDString& rStrSemantic, int32_t nSet, domSource& rSource)
{
    if (nOffset >= m_nIndicesPerVertex)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in invalid offset %d", nOffset);
        return false;
    }
    QD_CHECK(m_vecInputs.size() < MAX_INPUTS, false);
    CDeindexerInputData objInput;
    if (!objInput.Setup(nOffset, rStrSemantic, nSet, &rSource, m_rDataSources) ||
        !AddVertexFormatMember(objInput))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to setup <input semantic=\"%s\">", rStrSemantic);
        return false;
    }
    m_vecInputs.push_back(objInput);
    return true;
}

bool CDeindexer::AddVertexFormatMember(CDeindexerInputData& rInput)
{
    const CSGVertexFormat::EMember eMember = rInput.GetVertexMember();
    if (eMember == CSGVertexFormat::MEMBER_NONE)
    {
        return true;
    }
    if (m_objFormat.FindMember(eMember, rInput.GetSet()) != nullptr)
    {
        Log(QD_COLLADA, LOG_WARNING,
            "Already had an <input semantic=\"%s\"> for set %d.  Data from this <input> will be ignored.",
            rInput.GetSemantic(), rInput.GetSet());
        rInput.Ignore();
        return true;
    }
    QD_CHECK(m_objFormat.GetFloatsPerVertex() + rInput.GetNumFloats() <= MAX_FLOATS_PER_VERTEX, false);
    return m_objFormat.AddMemberN(eMember, rInput.GetSet(), rInput.GetNumFloats());
}

bool CDeindexer::DeindexPrimitives(std::span<const unsigned long long> arrIndices)
{
    if (m_nIndicesPerVertex <= 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "Had no input indices per vertex.");
        return false;
    }
    const auto nTupleSize = static_cast<size_t>(m_nIndicesPerVertex);
    const int nTotal = static_cast<int>(arrIndices.size());
    if (arrIndices.size() % nTupleSize != 0)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Total number of input indices %d was not a multiple of %d number of input indices per vertex",
            nTotal, m_nIndicesPerVertex);
        return false;
    }
    const size_t nCorners = arrIndices.size() / nTupleSize;
    if (nCorners < 1 || !std::in_range<int32_t>(nCorners))
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Got invalid number of indices %d for %d total input indices and %d indices per vertex.",
            static_cast<int>(nCorners), nTotal, m_nIndicesPerVertex);
        return false;
    }
    m_vecCornerVertices.resize(nCorners);
    CIndexTupleSet objTuples(m_nIndicesPerVertex);
    std::vector<int32_t> vecTuple(nTupleSize);
    auto itIndex = arrIndices.begin();
    for (int32_t& rnVertex : m_vecCornerVertices)
    {
        for (int32_t& rnIndex : vecTuple)
        {
            rnIndex = ToIndex(*itIndex++);
        }
        rnVertex = objTuples.Insert(vecTuple.data());
    }
    m_nNumVertices = objTuples.GetCount();
    m_vecTuples = objTuples.TakeTuples();
    return true;
}

int32_t CDeindexer::GetNumOriginalVertices() const
{
    if (m_nOriginalVerticesInput < 0 || static_cast<size_t>(m_nOriginalVerticesInput) >= m_vecInputs.size())
    {
        Log(QD_COLLADA, LOG_ERROR, "Had invalid original vertices input %d", m_nOriginalVerticesInput);
        return -1;
    }
    return m_vecInputs[static_cast<size_t>(m_nOriginalVerticesInput)].GetDataSource().GetNumValues();
}

boost::intrusive_ptr<CDeindexedVertexBuffer> CDeindexer::CreateVertexBuffer() const
{
    if (m_nNumVertices < 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "Had invalid number of vertices %d.", m_nNumVertices);
        return nullptr;
    }
    const int32_t nNumOriginalVertices = GetNumOriginalVertices();
    if (nNumOriginalVertices < 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "Had invalid number of original vertices %d.", nNumOriginalVertices);
        return nullptr;
    }
    if (!CheckIndices())
    {
        return nullptr;
    }
    const boost::intrusive_ptr<CDeindexedVertexBuffer> spBuffer =
        CDeindexedVertexBuffer::Create(m_objFormat, nNumOriginalVertices, m_nNumVertices);
    if (!spBuffer)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Failed to create a deindexed vertex buffer with %d original vertices and %d deindexed vertices.",
            nNumOriginalVertices, m_nNumVertices);
        return nullptr;
    }
    return FillVertices(*spBuffer) ? spBuffer : nullptr;
}

bool CDeindexer::CheckIndices() const
{
    for (int32_t nVertex = 0; nVertex < m_nNumVertices; ++nVertex)
    {
        for (size_t nInput = 0; nInput < m_vecInputs.size(); ++nInput)
        {
            const CDeindexerInputData& rInput = m_vecInputs[nInput];
            if (rInput.GetVertexMember() == CSGVertexFormat::MEMBER_NONE)
            {
                continue;
            }
            int32_t nIndex = GetIndex(nVertex, rInput);
            if (nIndex < 0)
            {
                Log(QD_COLLADA, LOG_WARNING,
                    "Found a negative input index in vertex data.  WTF?  Just going to use 0 instead.");
                nIndex = 0;
            }
            if (nIndex >= rInput.GetDataSource().GetNumValues())
            {
                Log(QD_COLLADA, LOG_ERROR,
                    "Failed to look up input value at index %d in Float2Array for <input semantic=\"%s\"> "
                    "at index %d for vertex %d",
                    nIndex, rInput.GetSemantic(), static_cast<int>(nInput), nVertex);
                return false;
            }
        }
    }
    return true;
}

bool CDeindexer::FillVertices(CDeindexedVertexBuffer& rBuffer) const
{
    const std::span<float> arrVertices = rBuffer.GetVertexBuffer()->EditData();
    for (size_t nInput = 0; nInput < m_vecInputs.size(); ++nInput)
    {
        const CDeindexerInputData& rInput = m_vecInputs[nInput];
        if (rInput.GetVertexMember() == CSGVertexFormat::MEMBER_NONE)
        {
            continue;
        }
        FillMember(rInput, arrVertices);
        if (static_cast<int32_t>(nInput) != m_nOriginalVerticesInput)
        {
            continue;
        }
        for (int32_t nVertex = 0; nVertex < m_nNumVertices; ++nVertex)
        {
            const int32_t nIndex = std::max(0, GetIndex(nVertex, rInput));
            if (!rBuffer.AddIndex(nVertex, nIndex))
            {
                Log(QD_COLLADA, LOG_ERROR,
                    "Failed to add index %d from input data index %d to deindexed vertex buffer.", nVertex,
                    nIndex);
                return false;
            }
        }
    }
    return true;
}

void CDeindexer::FillMember(const CDeindexerInputData& rInput, std::span<float> arrVertices) const
{
    const CSGVertexFormat::CMember* pMember =
        m_objFormat.FindMember(rInput.GetVertexMember(), rInput.GetSet());
    const auto nFloats = static_cast<size_t>(pMember->m_nFloats);
    const auto nFloatsPerVertex = static_cast<size_t>(m_objFormat.GetFloatsPerVertex());
    // The scene graph's textures begin at the other corner.
    const bool bFlip = pMember->m_eMember == CSGVertexFormat::MEMBER_TEXCOORD && nFloats == 2;
    const float* pSource = rInput.GetDataSource().GetPrimitives().data();
    float* pDest = arrVertices.data() + pMember->m_nOffset;
    for (int32_t nVertex = 0; nVertex < m_nNumVertices; ++nVertex, pDest += nFloatsPerVertex)
    {
        const auto nIndex = static_cast<size_t>(std::max(0, GetIndex(nVertex, rInput)));
        std::copy_n(pSource + nIndex * nFloats, nFloats, pDest);
        if (bFlip)
        {
            pDest[1] = 1.0f - pDest[1];
        }
    }
}

boost::intrusive_ptr<CSGIndexBuffer> CDeindexer::CreateIndexBuffer(std::span<const int32_t> arrVertices) const
{
    if (arrVertices.empty() || !std::in_range<int32_t>(arrVertices.size()))
    {
        Log(QD_COLLADA, LOG_ERROR, "Had invalid number of indices %d.", static_cast<int>(arrVertices.size()));
        return nullptr;
    }
    boost::intrusive_ptr<CSGIndexBuffer> spIndexBuffer = CSGIndexBuffer::Create(0, m_nNumVertices - 1);
    if (!spIndexBuffer || !spIndexBuffer->AddIndices(arrVertices))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create buffer of %d indices.",
            static_cast<int>(arrVertices.size()));
        return nullptr;
    }
    return spIndexBuffer;
}
