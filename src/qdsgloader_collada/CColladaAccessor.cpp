#include "qdsgloader_collada/CColladaAccessor.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include <algorithm>

namespace
{

// How often an entry of an array may be read, all values together: values may overlap, but not so that a
// small file makes a huge source.
constexpr int64_t MAX_READS_PER_ENTRY = 16;

bool IsNamed(const domParam& rParam) { return *Text(rParam.getName()) != '\0'; }

// Past this nothing lies within an array; sums and differences of such numbers stay exact.
int64_t Clamp(domUint uiValue)
{
    return static_cast<int64_t>(std::min<domUint>(uiValue, std::numeric_limits<int32_t>::max()));
}

} // namespace

bool CColladaAccessor::HasArray(domSource& rSource, int32_t nElementType)
{
    const domSource::domTechnique_common* pTechnique = rSource.getTechnique_common();
    const domAccessor* pAccessor = pTechnique != nullptr ? pTechnique->getAccessor().cast() : nullptr;
    const daeElement* pArray = pAccessor != nullptr
                                   ? CSGLoaderCollada::FindURIElement(pAccessor->getSource(), nElementType)
                                   : nullptr;
    if (pArray != nullptr)
    {
        return pArray->typeID() == nElementType;
    }
    const auto& rChildren = rSource.getContents();
    return std::ranges::any_of(
        AsSpan(rChildren), [=](const daeElementRef& rspChild) { return rspChild->typeID() == nElementType; });
}

bool CColladaAccessor::Setup(domSource& rSource, const CArrayKind& rKind)
{
    const char* szID = GetIDText(rSource);
    domSource::domTechnique_common* pTechnique = rSource.getTechnique_common();
    if (pTechnique == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<source id=\"%s\"> had NULL <technique_common>", szID);
        return false;
    }
    domAccessor* pAccessor = pTechnique->getAccessor();
    if (pAccessor == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<technique_common> in <source id=\"%s\"> had NULL <accessor>", szID);
        return false;
    }
    m_pArray = CSGLoaderCollada::GetURIElement(pAccessor->getSource(), rKind.m_nElementType);
    if (m_pArray == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "URI for <accessor> in <source id=\"%s\"> referred to NULL <%s>", szID,
            rKind.m_szElementName);
        return false;
    }
    if (!BuildLayout(rSource, rKind.m_ePrimitive))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create primitive layout for <source id=\"%s\">", szID);
        return false;
    }
    m_nCount = Clamp(pAccessor->getCount());
    m_nOffset = Clamp(pAccessor->getOffset());
    m_nStride = pAccessor->isAttributeSet("stride") ? Clamp(pAccessor->getStride()) : 1;
    return true;
}

bool CColladaAccessor::BuildLayout(domSource& rSource, EColladaPrimitive ePrimitive)
{
    const auto arrParams = AsSpan(rSource.getTechnique_common()->getAccessor()->getParam_array());
    // A parameter without a name marks data to be left out. Where none has a name they are the data.
    const bool bSkipUnnamed =
        std::ranges::any_of(arrParams, [](const domParamRef& rsp) { return IsNamed(*rsp); });
    int32_t nOffset = 0;
    for (const domParamRef& rspParam : arrParams)
    {
        const char* szType = Text(rspParam->getType());
        const auto Fail = [&](const CQDString& rStrFault) {
            Log(QD_COLLADA, LOG_ERROR,
                "%s <param name=\"%s\"> in <accessor> in <technique_common> in <source id=\"%s\">", rStrFault,
                Text(rspParam->getName()), GetIDText(rSource));
            return false;
        };
        if (*szType == '\0')
        {
            return Fail("Had NULL type in");
        }
        EColladaPrimitive eParamPrimitive{};
        int32_t nNumPrimitives = 0;
        if (!CColladaDataSource::GetPrimTypeAndNumberFromName(szType, eParamPrimitive, nNumPrimitives))
        {
            return Fail(CQDString("Unknown type ") + szType + " in");
        }
        // COLLADA's own samples call ids of nodes names.
        const bool bIDsAsNames =
            ePrimitive == EColladaPrimitive::IDRef && eParamPrimitive == EColladaPrimitive::String;
        if (eParamPrimitive != ePrimitive && !bIDsAsNames)
        {
            return Fail(CQDString("Incorrect type ") + szType + " in");
        }
        if ((IsNamed(*rspParam) || !bSkipUnnamed) && !m_objLayout.AddParam(nOffset, nNumPrimitives))
        {
            return Fail("Failed to add to layout");
        }
        nOffset += nNumPrimitives;
    }
    return true;
}

bool CColladaAccessor::CheckArrayLength(size_t nLength) const
{
    const auto nEntries = static_cast<int64_t>(nLength);
    // How many values end within the array, and how many may share it.
    const int64_t nRoom = nEntries - m_nOffset - m_objLayout.GetExtent();
    const int64_t nInside = nRoom < 0 ? 0 : m_nStride == 0 ? m_nCount : nRoom / m_nStride + 1;
    const int64_t nShared =
        nEntries * MAX_READS_PER_ENTRY / std::max<int64_t>(1, m_objLayout.GetPrimitivesPerValue());
    const int64_t nMaxCount = std::min(nInside, nShared);
    if (m_nCount > nMaxCount)
    {
        Log(QD_COLLADA, LOG_ERROR, "Source array was too small to get value at %d",
            static_cast<int>(nMaxCount));
        return false;
    }
    return true;
}
