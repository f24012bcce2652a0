#include "qdsgloader_collada/CColladaSkinData.h"

#include "qdcommon/CLogChecks.h"
#include "qdsgloader_collada/CCDS_FloatArray.h"
#include "qdsgloader_collada/CCDS_IDRefArray.h"
#include "qdsgloader_collada/CCDS_StringArray.h"
#include "qdsgloader_collada/CColladaConverter.h"
#include "qdsgloader_collada/CColladaDataSourceCache.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaJointNames.h"
#include "qdsgloader_collada/CColladaNodeConverter.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

namespace
{

// What a joint of a skin takes up, in numbers.
constexpr uint64_t NUMBERS_PER_JOINT = 16;
constexpr int32_t BIND_SHAPE = -1; // as a joint index

int ToInt(size_t nNumber) { return static_cast<int>(std::min<size_t>(nNumber, INT32_MAX)); }

} // namespace

// The <vertex_weights>.
struct CColladaSkinData::CWeightInputs
{
    std::span<const domUint> arrVCounts;
    std::span<const domInt> arrV;
    size_t nStride = 0; // of a pair in arrV
    size_t nJointOffset = 0;
    size_t nWeightOffset = 0;
    CNames vecNames;
    std::vector<int32_t> vecJoints; // in m_vecJoints, of each name; -1: none
    boost::intrusive_ptr<CCDS_FloatArray> spWeights;
};

bool CColladaSkinData::Load(const domSkin& rSkin)
{
    const domSkin::domBind_shape_matrix* pBindShape = rSkin.getBind_shape_matrix();
    if (pBindShape != nullptr &&
        !CColladaConverter::GetTransform(AsSpan(pBindShape->getValue()), m_objBindShape))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to convert <bind_shape_matrix> to a transform in <skin id=\"%s\">",
            m_szID);
        return false;
    }
    CWeightInputs objInputs;
    return LoadJoints(rSkin) && LoadWeightInputs(rSkin, objInputs) && LoadWeights(objInputs);
}

template <class INPUT, class INPUTS>
const INPUT* CColladaSkinData::FindInput(const INPUTS& rInputs, const char* szSemantic,
                                         const char* szParent) const
{
    for (const auto& rspInput : AsSpan(rInputs))
    {
        if (std::string_view(Text(rspInput->getSemantic())) == szSemantic)
        {
            return rspInput.cast();
        }
    }
    Log(QD_COLLADA, LOG_ERROR, "<%s> had no <input semantic=\"%s\"> in <skin id=\"%s\">", szParent,
        szSemantic, m_szID);
    return nullptr;
}

bool CColladaSkinData::LoadNames(domSource& rSource, CNames& rvecNames)
{
    const CColladaDataSourceCache::CDataSourcePtr spSource = m_rDataSources.GetDataSource(rSource);
    if (!spSource)
    {
        return false;
    }
    if (spSource->GetPrimitivesPerValue() != 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "Expected 1 primitive per value for joint names source but got %d",
            spSource->GetPrimitivesPerValue());
        return false;
    }
    if (spSource->InstanceOf(&CCDS_StringArray::ms_objType))
    {
        for (const CQDString& rName : static_cast<CCDS_StringArray&>(*spSource).GetPrimitives())
        {
            rvecNames.push_back(m_rJointNames.GetLocalName(rName));
        }
        return true;
    }
    if (!spSource->InstanceOf(&CCDS_IDRefArray::ms_objType))
    {
        Log(QD_COLLADA, LOG_ERROR, "Joint names source was of invalid type %d %s",
            spSource->GetType().GetTypeID(), spSource->GetType().GetName());
        return false;
    }
    for (const CQDString& rID : static_cast<CCDS_IDRefArray&>(*spSource).GetPrimitives())
    {
        const int nValue = ToInt(rvecNames.size());
        const daeElement* pElement = CSGLoaderCollada::FindIDElement(*rSource.getDAE(), rID, domNode::ID());
        if (pElement == nullptr || pElement->typeID() != domNode::ID())
        {
            Log(QD_COLLADA, LOG_ERROR, "IDRef for value %d, primitive %d did not refer to a node.", nValue,
                0);
            return false;
        }
        const auto& rNode = static_cast<const domNode&>(*pElement);
        if (*Text(rNode.getSid()) == '\0')
        {
            // Exporters that refer to joints by id do without scoped ids. The node is known all the same.
            Log(QD_COLLADA, LOG_WARNING, "IDRef for value %d, primitive %d referenced a node with no SID.",
                nValue, 0);
        }
        rvecNames.push_back(CColladaNodeConverter::GetLocalName(rNode));
    }
    return true;
}

bool CColladaSkinData::LoadJoints(const domSkin& rSkin)
{
    const domSkin::domJoints* pJoints = rSkin.getJoints();
    if (pJoints == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<skin id=\"%s\"> had NULL <joints>", m_szID);
        return false;
    }
    const auto* pNameInput = FindInput<domInputLocal>(pJoints->getInput_array(), "JOINT", "joints");
    const auto* pMatrixInput =
        FindInput<domInputLocal>(pJoints->getInput_array(), "INV_BIND_MATRIX", "joints");
    auto* pNames =
        pNameInput != nullptr ? CSGLoaderCollada::GetURIElement<domSource>(pNameInput->getSource()) : nullptr;
    auto* pMatrices = pMatrixInput != nullptr
                          ? CSGLoaderCollada::GetURIElement<domSource>(pMatrixInput->getSource())
                          : nullptr;
    if (pNames == nullptr || pMatrices == nullptr || !LoadNames(*pNames, m_vecNames))
    {
        return false;
    }
    const CColladaDataSourceCache::CDataSourcePtr spMatrices = m_rDataSources.GetDataSource(*pMatrices);
    if (!spMatrices)
    {
        return false;
    }
    if (!spMatrices->InstanceOf(&CCDS_FloatArray::ms_objType))
    {
        Log(QD_COLLADA, LOG_ERROR, "Inverse bind matrices source was of invalid type %d %s",
            spMatrices->GetType().GetTypeID(), spMatrices->GetType().GetName());
        return false;
    }
    if (spMatrices->GetPrimitivesPerValue() != 16)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Expected 16 primitives per value for inverse bind matrices source but got %d",
            spMatrices->GetPrimitivesPerValue());
        return false;
    }
    if (spMatrices->GetNumValues() != static_cast<int32_t>(m_vecNames.size()))
    {
        Log(QD_COLLADA, LOG_ERROR, "Got %d joints and %d inverse bind matrices.", ToInt(m_vecNames.size()),
            spMatrices->GetNumValues());
        return false;
    }
    m_pNames = pNames;
    for (size_t n = 0; n < m_vecNames.size(); ++n)
    {
        const auto nJoint = static_cast<int32_t>(n);
        const auto arrValue = static_cast<CCDS_FloatArray&>(*spMatrices).GetValue(nJoint);
        const std::vector<double> vecValue(arrValue.begin(), arrValue.end());
        CTransform3 objInverseBind;
        if (!CColladaConverter::GetTransform(vecValue, objInverseBind))
        {
            Log(QD_COLLADA, LOG_ERROR,
                "Failed to convert inverse bind matrix %d to a transform in <skin id=\"%s\">", nJoint,
                m_szID);
            return false;
        }
        m_vecJoints.push_back(CSGJoint::Create(m_vecNames[n], objInverseBind));
        m_mapJoints.Add(m_vecNames[n].c_str(), nJoint);
    }
    return true;
}

bool CColladaSkinData::LoadWeightInputs(const domSkin& rSkin, CWeightInputs& rInputs)
{
    const domSkin::domVertex_weights* pWeights = rSkin.getVertex_weights();
    if (pWeights == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<skin id=\"%s\"> had NULL <vertex_weights>", m_szID);
        return false;
    }
    const auto& rArrInputs = pWeights->getInput_array();
    for (const auto& rspInput : AsSpan(rArrInputs))
    {
        const int32_t nOffset = ToInt32(rspInput->getOffset());
        if (nOffset < 0)
        {
            Log(QD_COLLADA, LOG_ERROR, "Handed in invalid offset %d", nOffset);
            return false;
        }
        rInputs.nStride = std::max(rInputs.nStride, static_cast<size_t>(nOffset) + 1);
    }
    const auto* pJoints = FindInput<domInputLocalOffset>(rArrInputs, "JOINT", "vertex_weights");
    const auto* pValues = FindInput<domInputLocalOffset>(rArrInputs, "WEIGHT", "vertex_weights");
    auto* pNames =
        pJoints != nullptr ? CSGLoaderCollada::GetURIElement<domSource>(pJoints->getSource()) : nullptr;
    auto* pWeightSource =
        pValues != nullptr ? CSGLoaderCollada::GetURIElement<domSource>(pValues->getSource()) : nullptr;
    if (pNames == nullptr || pWeightSource == nullptr)
    {
        return false;
    }
    if (pNames == m_pNames) // as a rule
    {
        rInputs.vecNames = m_vecNames;
    }
    else if (!LoadNames(*pNames, rInputs.vecNames))
    {
        return false;
    }
    const CColladaDataSourceCache::CDataSourcePtr spSource = m_rDataSources.GetDataSource(*pWeightSource);
    if (!spSource || !spSource->InstanceOf(&CCDS_FloatArray::ms_objType) ||
        spSource->GetPrimitivesPerValue() != 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "Weights source had not 1 float per value in <skin id=\"%s\">", m_szID);
        return false;
    }
    rInputs.spWeights = static_cast<CCDS_FloatArray*>(spSource.get());
    rInputs.nJointOffset = static_cast<size_t>(pJoints->getOffset());
    rInputs.nWeightOffset = static_cast<size_t>(pValues->getOffset());
    for (const CQDCompactString& rName : rInputs.vecNames)
    {
        rInputs.vecJoints.push_back(m_mapJoints.Find(rName.c_str(), -1));
    }
    if (const domSkin::domVertex_weights::domVcount* pVCount = pWeights->getVcount())
    {
        rInputs.arrVCounts = AsSpan(pVCount->getValue());
    }
    if (const domSkin::domVertex_weights::domV* pV = pWeights->getV())
    {
        rInputs.arrV = AsSpan(pV->getValue());
    }
    if (rInputs.arrVCounts.size() != pWeights->getCount())
    {
        Log(QD_COLLADA, LOG_ERROR,
            "<vcount> had %d values which differed from %d vertices specified by <vertex_weights> in <skin "
            "id=\"%s\">",
            ToInt(rInputs.arrVCounts.size()), ToInt(pWeights->getCount()), m_szID);
        return false;
    }
    return true;
}

bool CColladaSkinData::LoadWeights(const CWeightInputs& rInputs)
{
    m_spWeights = CSGSkinVertexWeights::Create();
    QD_CHECK_CREATED(m_spWeights, false);
    size_t nPosition = 0; // in the <v>
    std::vector<CSGSkinWeight> vecWeights;
    for (size_t n = 0; n < rInputs.arrVCounts.size(); ++n)
    {
        const auto nVertex = static_cast<int32_t>(n);
        const domUint uiPairs = rInputs.arrVCounts[n];
        if (uiPairs > (rInputs.arrV.size() - nPosition) / rInputs.nStride)
        {
            Log(QD_COLLADA, LOG_ERROR,
                "<v> had only %d values and ended in vertex %d in <vertex_weights> in <skin id=\"%s\">",
                ToInt(rInputs.arrV.size()), nVertex, m_szID);
            return false;
        }
        vecWeights.resize(uiPairs);
        for (CSGSkinWeight& rWeight : vecWeights)
        {
            if (!LoadWeight(rInputs, nPosition, nVertex, rWeight))
            {
                return false;
            }
            nPosition += rInputs.nStride;
        }
        if (!CSGSkinVertexWeights::Normalize(vecWeights))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to normalize weights for vertex %d", nVertex);
            return false;
        }
        if (!m_spWeights->AddVertex(vecWeights))
        {
            if (vecWeights.size() > CSGSkinVertexWeights::MAX_JOINTS_PER_VERTEX)
            {
                Log(QD_COLLADA, LOG_ERROR, "Failed to set max joints per vertex to %d",
                    ToInt(vecWeights.size()));
            }
            return false;
        }
    }
    if (nPosition != rInputs.arrV.size())
    {
        Log(QD_COLLADA, LOG_ERROR,
            "<v> had %d values where <vcount> asks for %d in <vertex_weights> in <skin id=\"%s\">",
            ToInt(rInputs.arrV.size()), ToInt(nPosition), m_szID);
        return false;
    }
    return true;
}

bool CColladaSkinData::LoadWeight(const CWeightInputs& rInputs, size_t nPosition, int32_t nVertex,
                                  CSGSkinWeight& rWeight)
{
    const domInt nName = rInputs.arrV[nPosition + rInputs.nJointOffset];
    const domInt nWeight = rInputs.arrV[nPosition + rInputs.nWeightOffset];
    if (nName < BIND_SHAPE || nName >= static_cast<domInt>(rInputs.vecJoints.size()) || nWeight < 0 ||
        nWeight >= rInputs.spWeights->GetNumValues())
    {
        Log(QD_COLLADA, LOG_ERROR,
            "<v> had no such joint or weight at index %d for vertex %d in <vertex_weights> in <skin "
            "id=\"%s\">",
            ToInt(nPosition), nVertex, m_szID);
        return false;
    }
    rWeight.m_fWeight = rInputs.spWeights->GetPrimitives()[static_cast<size_t>(nWeight)];
    if (nName == BIND_SHAPE)
    {
        rWeight.m_nJoint = m_nBindShapeJoint;
        return m_nBindShapeJoint >= 0 || (SetBindShapeJoint() && (rWeight.m_nJoint = m_nBindShapeJoint) >= 0);
    }
    rWeight.m_nJoint = rInputs.vecJoints[static_cast<size_t>(nName)];
    if (rWeight.m_nJoint < 0)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Skin had no joint named %s from name value %d for V index %d for vertex %d in <vertex_weights> "
            "in <skin id=\"%s\">",
            rInputs.vecNames[static_cast<size_t>(nName)], static_cast<int>(nName), ToInt(nPosition), nVertex,
            m_szID);
        return false;
    }
    return true;
}

bool CColladaSkinData::SetBindShapeJoint()
{
    const CSGSkin::CJointPtr spJoint = CSGJoint::Create(CQDCompactString(), CTransform3());
    QD_CHECK_CREATED(spJoint, false);
    m_nBindShapeJoint = static_cast<int32_t>(m_vecJoints.size());
    m_vecJoints.push_back(spJoint);
    return true;
}

boost::intrusive_ptr<CSGSkin> CColladaSkinData::CreateSkin(const CDeindexedVertexBuffer& rVertexBuffer)
{
    const int32_t nNumOriginals = rVertexBuffer.GetNumOriginalVertices();
    if (m_spWeights->GetNumVertices() < nNumOriginals)
    {
        Log(QD_COLLADA, LOG_ERROR, "<vertex_weights> had %d vertices and the geometry %d in <skin id=\"%s\">",
            m_spWeights->GetNumVertices(), nNumOriginals, m_szID);
        return nullptr;
    }
    std::vector<int32_t> vecOriginals(static_cast<size_t>(rVertexBuffer.GetVertexBuffer()->GetNumVertices()),
                                      -1);
    uint64_t uiNumbers = m_vecJoints.size() * NUMBERS_PER_JOINT;
    for (int32_t nOriginal = 0; nOriginal < nNumOriginals; ++nOriginal)
    {
        const auto arrIndices = rVertexBuffer.GetDeindexedIndicesForOriginalIndex(nOriginal);
        if (!arrIndices.empty())
        {
            uiNumbers += arrIndices.size() + m_spWeights->GetWeights(nOriginal).m_arrJoints.size();
        }
        for (const int32_t nIndex : arrIndices)
        {
            vecOriginals[static_cast<size_t>(nIndex)] = nOriginal;
        }
    }
    if (!m_rDataSources.TakeFromBudget(uiNumbers))
    {
        Log(QD_COLLADA, LOG_ERROR, "The skins up to <skin id=\"%s\"> hold too much for the size of the file",
            m_szID);
        return nullptr;
    }
    for (size_t n = 0; n < vecOriginals.size(); ++n)
    {
        if (vecOriginals[n] < 0)
        {
            Log(QD_COLLADA, LOG_ERROR,
                "Failed to set vertex weights for deindexed vertex %d for original vertex %d", ToInt(n), -1);
            return nullptr;
        }
    }
    const auto spWeights = m_spWeights->CreateSelection(vecOriginals);
    QD_CHECK_CREATED(spWeights, nullptr);
    return CSGSkin::Create(m_objBindShape, m_vecJoints, spWeights);
}
