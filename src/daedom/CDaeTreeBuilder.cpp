// Builds a document of the COLLADA DOM from what an XML parser reports.
#include "daedom/CDaeTreeBuilder.h"

#include "daedom/CDaeNumber.h"
#include "daedom/CDaeUri.h"
#include "qdcommon/CLog.h"

#include <1.4/dom/domAny.h>
#include <dae/daeDatabase.h>
#include <dae/daeDocument.h>

#include <algorithm>
#include <concepts>

namespace
{

// Elements take far more memory than their text, and entities repeat them without any. These bound both: the
// memory for elements by a multiple of the file's size, with a free share for small files, and the text by
// another.
constexpr uint64_t FREE_ELEMENT_BYTES = 64 << 20;
constexpr uint64_t ELEMENT_BYTES_PER_BYTE = 64;
constexpr uint64_t FREE_TEXT_BYTES = 8 << 20;
constexpr uint64_t TEXT_BYTES_PER_BYTE = 4;
// What an element of unknown kind takes with the type that the DOM makes for it.
constexpr uint64_t UNKNOWN_ELEMENT_BYTES = 1200;

// The DOM copies names of elements into so much space, and searches the attributes of an unknown element one
// by one.
constexpr size_t MAX_UNKNOWN_NAME = 127;
constexpr size_t MAX_UNKNOWN_ATTRIBUTES = 256;
// A URI longer than this is left out: the DOM copies each a dozen times.
constexpr size_t MAX_URI = 65536;

// The namespaces of COLLADA 1.4 and 1.5 differ in the year and month only.
bool IsColladaNamespace(std::string_view strURI)
{
    return strURI.ends_with("/COLLADASchema") && strURI.find("://www.collada.org/") != std::string_view::npos;
}

// What COLLADA 1.5 calls otherwise than 1.4.1.
struct CNewName
{
    std::string_view strParent;
    std::string_view strName;
    std::string_view strOldName;
};
constexpr CNewName NEW_NAMES[] = {
    // There the name of a surface: a sampler that names an image itself is as good.
    {"sampler2D", "instance_image", "source"},
    {"sampler2D", "mip_max_level", "mipmap_maxlevel"},
    {"sampler2D", "mip_bias", "mipmap_bias"},
};

std::string_view GetOldName(std::string_view strParent, std::string_view strName)
{
    for (const CNewName& rName : NEW_NAMES)
    {
        if (rName.strName == strName && rName.strParent == strParent)
        {
            return rName.strOldName;
        }
    }
    return strName;
}

// The id that an <instance_image> refers to.
std::string GetImageID(const char* const* ppAttributes)
{
    for (; *ppAttributes; ppAttributes += 2)
    {
        if (std::string_view(ppAttributes[0]) == "url")
        {
            const std::string_view strURL = TrimDaeSpace(ppAttributes[1]);
            return DecodeDaeReference(strURL.substr(std::min(strURL.find('#') + 1, strURL.size())));
        }
    }
    return {};
}

std::string Tag(std::string_view strName) { return "<" + CDaeReport::Quote(strName) + ">"; }

// The element and what identifies it: its own id, or that of the nearest element around it.
std::string Describe(daeElement& rElement)
{
    const std::string strTag = Tag(rElement.getElementName());
    for (daeElement* pElement = &rElement; pElement; pElement = pElement->getParentElement())
    {
        if (const daeString szID = pElement->getID(); szID && *szID)
        {
            const std::string strID = " id=\"" + CDaeReport::Quote(szID) + "\"";
            return pElement == &rElement
                       ? strTag.substr(0, strTag.size() - 1) + strID + ">"
                       : strTag + " in <" + CDaeReport::Quote(pElement->getElementName()) + strID + ">";
        }
    }
    return strTag;
}

std::string_view Noun(const daeAtomicType& rType)
{
    switch (const_cast<daeAtomicType&>(rType).getTypeEnum())
    {
    case daeAtomicType::FloatType:
    case daeAtomicType::DoubleType:
        return "a number";
    case daeAtomicType::ULongType:
    case daeAtomicType::LongType:
    case daeAtomicType::UIntType:
    case daeAtomicType::IntType:
    case daeAtomicType::ShortType:
        return "a whole number in range";
    case daeAtomicType::BoolType:
        return "true or false";
    default:
        return "one of the allowed values";
    }
}

template <std::floating_point T>
bool ReadNumber(std::string_view strText, daeMemoryRef pValue)
{
    return ParseDaeReal(strText, *reinterpret_cast<T*>(pValue));
}

template <std::integral T>
bool ReadNumber(std::string_view strText, daeMemoryRef pValue)
{
    return ParseDaeInteger(strText, *reinterpret_cast<T*>(pValue));
}

} // namespace

CDaeTreeBuilder::CDaeTreeBuilder(DAE& rDAE, CDaeReport& rReport, std::string strURI, uint64_t uiFileSize)
    : m_rDAE(rDAE),
      m_rReport(rReport),
      m_strURI(std::move(strURI)),
      m_uiFileSize(uiFileSize),
      m_objModel(rDAE)
{}

void CDaeTreeBuilder::StartElement(std::string_view strName, const char* const* ppAttributes)
{
    if (m_nSkipped > 0 || m_rReport.HasFailed())
    {
        ++m_nSkipped;
        return;
    }
    m_nBindingsOutside = m_arrBindings.size();
    BindNamespaces(ppAttributes);
    const size_t nColon = strName.find(':');
    const std::string_view strPrefix = nColon == std::string_view::npos ? "" : strName.substr(0, nColon);
    const std::string_view strLocal = nColon == std::string_view::npos ? strName : strName.substr(nColon + 1);
    // A technique names the namespace of what it holds; it is itself COLLADA's.
    const size_t nBindings = strLocal == "technique" ? m_nBindingsOutside : m_arrBindings.size();
    const bool bCollada = IsCollada(strPrefix, nBindings);

    if (m_arrFrames.empty() ? StartRoot(strName, bCollada && strLocal == "COLLADA")
                            : StartChild(strName, strLocal, bCollada))
    {
        if (strLocal == "instance_image" && m_arrFrames.back().eText == EText::Whole)
        {
            m_arrFrames.back().strText = GetImageID(ppAttributes);
        }
        else if (m_arrFrames.back().eText != EText::Outward)
        {
            SetAttributes(*m_arrFrames.back().pElement, ppAttributes);
        }
    }
    else
    {
        m_arrBindings.resize(m_nBindingsOutside);
        ++m_nSkipped;
    }
}

void CDaeTreeBuilder::BindNamespaces(const char* const* ppAttributes)
{
    for (; *ppAttributes; ppAttributes += 2)
    {
        const std::string_view strAttribute = ppAttributes[0];
        const std::string_view strURI = ppAttributes[1];
        if (strAttribute == "xmlns")
        {
            if (m_arrFrames.empty())
            {
                m_strRootNamespace = strURI;
            }
            m_arrBindings.push_back(
                {"", strURI.empty() || strURI == m_strRootNamespace || IsColladaNamespace(strURI)});
        }
        else if (strAttribute.starts_with("xmlns:"))
        {
            m_arrBindings.push_back({std::string(strAttribute.substr(6)), IsColladaNamespace(strURI)});
        }
    }
}

bool CDaeTreeBuilder::IsCollada(std::string_view strPrefix, size_t nBindings) const
{
    while (nBindings > 0)
    {
        const CBinding& rBinding = m_arrBindings[--nBindings];
        if (rBinding.strPrefix == strPrefix)
        {
            return rBinding.bCollada;
        }
    }
    return strPrefix.empty();
}

bool CDaeTreeBuilder::StartRoot(std::string_view strName, bool bCollada)
{
    if (!bCollada)
    {
        m_rReport.Fail("The root element is " + Tag(strName) + ", not <COLLADA>");
        return false;
    }
    if (m_rDAE.getDatabase()->insertDocument(m_strURI.c_str(), &m_pDocument) != DAE_OK || !m_pDocument)
    {
        m_rReport.Fail("The document is open already");
        return false;
    }
    daeElement* pRoot = m_pDocument->getDomRoot();
    Push(pRoot, &m_objModel.GetRules(*pRoot->getMeta()), false);
    return true;
}

bool CDaeTreeBuilder::StartChild(std::string_view strName, std::string_view strLocal, bool bCollada)
{
    const CFrame& rParent = m_arrFrames.back();
    if (rParent.eText == EText::Whole && bCollada && strLocal == "ref" &&
        std::string_view(rParent.pElement->getElementName()) == "init_from")
    {
        Push(rParent.pElement, rParent.pRules, rParent.bExtension);
        m_arrFrames.back().eText = EText::Outward;
        return true;
    }
    if (rParent.eText == EText::Outward)
    {
        return false;
    }
    if (bCollada)
    {
        strLocal = GetOldName(rParent.pElement->getElementName(), strLocal);
    }
    const CDaeContentModel::CRule* pRule = bCollada ? m_objModel.FindChild(*rParent.pRules, strLocal)
                                                    : CDaeContentModel::FindAny(*rParent.pRules);
    if (!bCollada)
    {
        strLocal = strName;
    }
    if (!pRule)
    {
        m_rReport.Notice(LOG_INFO, "Left out unknown element " + Tag(strName) + " in " +
                                       Tag(rParent.pElement->getElementName()));
        return false;
    }
    if (!CanMake(*pRule, strLocal))
    {
        return false;
    }
    daeElement* pElement = CDaeContentModel::AddChild(*rParent.pElement, *pRule, strLocal);
    if (!pElement)
    {
        m_rReport.Notice(LOG_WARNING,
                         "Left out a second " + Tag(strLocal) + " in " + Describe(*rParent.pElement));
        return false;
    }
    Push(pElement, pRule->pRules, rParent.bExtension || CDaeContentModel::FindAny(*rParent.pRules));
    return true;
}

bool CDaeTreeBuilder::CanMake(const CDaeContentModel::CRule& rRule, std::string_view strName)
{
    if (m_arrFrames.size() >= MAX_DEPTH)
    {
        m_rReport.Fail("Elements are nested deeper than " + std::to_string(MAX_DEPTH));
        return false;
    }
    if (!rRule.pMeta && strName.size() > MAX_UNKNOWN_NAME)
    {
        m_rReport.Notice(LOG_WARNING, "Left out element with a name too long: " + Tag(strName));
        return false;
    }
    m_uiElementBytes +=
        rRule.pMeta ? static_cast<uint64_t>(rRule.pMeta->getElementSize()) : UNKNOWN_ELEMENT_BYTES;
    if (m_uiElementBytes > FREE_ELEMENT_BYTES + ELEMENT_BYTES_PER_BYTE * m_uiFileSize)
    {
        m_rReport.Fail("Too many elements for the size of the file");
        return false;
    }
    return true;
}

void CDaeTreeBuilder::Push(daeElement* pElement, CDaeContentModel::CRules* pRules, bool bExtension)
{
    EText eText = EText::None;
    if (daeMetaAttribute* pValue = pElement->getCharDataObject())
    {
        eText = pValue->isArrayAttribute() ? EText::Array : EText::Whole;
        if (eText == EText::Array)
        {
            m_objArray.Begin(*reinterpret_cast<daeArray*>(pValue->get(pElement)), *pValue->getType());
        }
    }
    m_arrFrames.push_back({pElement, pRules, eText, bExtension, m_nBindingsOutside, {}});
}

void CDaeTreeBuilder::AddText(std::string_view strText)
{
    if (m_nSkipped > 0 || m_arrFrames.empty() || m_rReport.HasFailed())
    {
        return;
    }
    m_uiTextBytes += strText.size();
    if (m_uiTextBytes > FREE_TEXT_BYTES + TEXT_BYTES_PER_BYTE * m_uiFileSize)
    {
        m_rReport.Fail("Entities expand to too much text for the size of the file");
        return;
    }
    CFrame& rFrame = m_arrFrames.back();
    switch (rFrame.eText)
    {
    case EText::None:
        if (!std::ranges::all_of(strText, IsDaeSpace))
        {
            m_rReport.Notice(LOG_INFO, "Left out text in " + Tag(rFrame.pElement->getElementName()));
        }
        break;
    case EText::Array:
        if (!m_objArray.Write(strText))
        {
            ReportBadValue(*rFrame.pElement, *rFrame.pElement->getCharDataObject(), m_objArray.GetBadToken());
        }
        break;
    case EText::Whole:
        rFrame.strText.append(strText);
        break;
    case EText::Ignored:
        break;
    case EText::Outward:
        m_arrFrames[m_arrFrames.size() - 2].strText.append(strText);
        break;
    }
}

bool CDaeTreeBuilder::IsInNumbers() const
{
    return m_nSkipped == 0 && !m_arrFrames.empty() && m_arrFrames.back().eText == EText::Array &&
           m_objArray.IsOfNumbers() && !m_rReport.HasFailed();
}

void CDaeTreeBuilder::EndElement()
{
    if (m_nSkipped > 0)
    {
        --m_nSkipped;
        return;
    }
    const CFrame& rFrame = m_arrFrames.back();
    if (!m_rReport.HasFailed())
    {
        daeElement& rElement = *rFrame.pElement;
        if (rFrame.eText == EText::Array && !m_objArray.End())
        {
            ReportBadValue(rElement, *rElement.getCharDataObject(), m_objArray.GetBadToken());
        }
        else if (rFrame.eText == EText::Whole)
        {
            // No text leaves a value as it is, but an enumeration's would be that of its first name.
            daeMetaAttribute& rValue = *rElement.getCharDataObject();
            if (!TrimDaeSpace(rFrame.strText).empty() ||
                rValue.getType()->getTypeEnum() == daeAtomicType::EnumType)
            {
                SetValue(rElement, rValue, rFrame.strText);
            }
        }
        CDaeContentModel::SortContents(rElement);
    }
    m_arrBindings.resize(rFrame.nBindings);
    m_arrFrames.pop_back();
}

void CDaeTreeBuilder::SetAttributes(daeElement& rElement, const char* const* ppAttributes)
{
    daeMetaAttributeRefArray& rAttributes = rElement.getMeta()->getMetaAttributes();
    const bool bUnknownKind =
        rElement.getMeta()->getAllowsAny() && rElement.typeID() == ColladaDOM141::domAny::ID();
    for (; *ppAttributes; ppAttributes += 2)
    {
        const std::string_view strName = ppAttributes[0];
        if (bUnknownKind)
        {
            if (rAttributes.getCount() >= MAX_UNKNOWN_ATTRIBUTES)
            {
                m_rReport.Notice(LOG_WARNING,
                                 "Left out attributes of " + Describe(rElement) + ", which has too many");
                return;
            }
            rElement.setAttribute(ppAttributes[0], ppAttributes[1]);
            continue;
        }
        size_t nIndex = 0;
        while (nIndex < rAttributes.getCount() && std::string_view(rAttributes[nIndex]->getName()) != strName)
        {
            ++nIndex;
        }
        if (nIndex < rAttributes.getCount())
        {
            SetAttribute(rElement, nIndex, ppAttributes[1]);
        }
        else if (strName != "xmlns" && strName.find(':') == std::string_view::npos)
        {
            m_rReport.Notice(LOG_INFO, "Left out unknown attribute " + CDaeReport::Quote(strName) + " of " +
                                           Tag(rElement.getElementName()));
        }
    }
}

void CDaeTreeBuilder::SetAttribute(daeElement& rElement, size_t nIndex, const char* szValue)
{
    daeMetaAttribute& rAttribute = *rElement.getMeta()->getMetaAttributes()[nIndex];
    if (rAttribute.isArrayAttribute())
    {
        CDaeArrayWriter objArray;
        objArray.Begin(*reinterpret_cast<daeArray*>(rAttribute.get(&rElement)), *rAttribute.getType());
        if (!objArray.Write(szValue) || !objArray.End())
        {
            ReportBadValue(rElement, rAttribute, objArray.GetBadToken());
            return;
        }
    }
    else if (!SetValue(rElement, rAttribute, szValue))
    {
        return;
    }
    CDaeElementAccess::ValidAttributes(rElement)[nIndex] = true;
}

// Sets an attribute, or the text of an element with a single value. False, and reported, when the text is no
// value of the type.
bool CDaeTreeBuilder::SetValue(daeElement& rElement, daeMetaAttribute& rAttribute, std::string_view strText)
{
    daeAtomicType& rType = *rAttribute.getType();
    const daeMemoryRef pValue = rAttribute.get(&rElement);
    const std::string_view strToken = TrimDaeSpace(strText);
    bool bGood = true;
    switch (rType.getTypeEnum())
    {
    case daeAtomicType::FloatType:
    case daeAtomicType::DoubleType:
        bGood = rType.getSize() == sizeof(double) ? ReadNumber<double>(strToken, pValue)
                                                  : ReadNumber<float>(strToken, pValue);
        break;
    case daeAtomicType::ULongType:
        bGood = ReadNumber<daeULong>(strToken, pValue);
        break;
    case daeAtomicType::LongType:
        bGood = ReadNumber<daeLong>(strToken, pValue);
        break;
    case daeAtomicType::UIntType:
        bGood = ReadNumber<daeUInt>(strToken, pValue);
        break;
    case daeAtomicType::IntType:
        bGood = ReadNumber<daeInt>(strToken, pValue);
        break;
    case daeAtomicType::ShortType:
        bGood = ReadNumber<daeShort>(strToken, pValue);
        break;
    case daeAtomicType::BoolType:
        bGood = ParseDaeBool(strToken, *reinterpret_cast<daeBool*>(pValue));
        break;
    case daeAtomicType::EnumType:
        if (!rType.stringToMemory(std::string(strToken).data(), pValue))
        {
            // It becomes the value behind the last, the enumeration's ..._COUNT; only the version of a later
            // document does without.
            if (&rElement != m_pDocument->getDomRoot())
            {
                *reinterpret_cast<daeEnum*>(pValue) =
                    static_cast<daeEnum>(static_cast<const daeEnumType&>(rType)._strings->getCount());
            }
            m_rReport.Notice(&rElement == m_pDocument->getDomRoot() ? LOG_INFO : LOG_WARNING,
                             "\"" + CDaeReport::Quote(strToken) + "\" in " + Describe(rElement) + " is not " +
                                 std::string(Noun(rType)));
            return false;
        }
        break;
    case daeAtomicType::ResolverType:
        if (strToken.size() > MAX_URI)
        {
            m_rReport.Notice(LOG_WARNING, "Left out a URI too long in " + Describe(rElement));
            return false;
        }
        rAttribute.stringToMemory(&rElement, EncodeDaeReference(strToken).c_str());
        break;
    case daeAtomicType::TokenType:
        // Whole, other than the DOM, which ends names at the first space.
        if (std::string_view(rAttribute.getName()) == "id")
        {
            m_rDAE.getDatabase()->changeElementID(&rElement, std::string(strToken).c_str());
        }
        *reinterpret_cast<daeStringRef*>(pValue) = std::string(strToken).c_str();
        break;
    default:
        rAttribute.stringToMemory(&rElement, std::string(strText).c_str());
        break;
    }
    if (!bGood)
    {
        ReportBadValue(rElement, rAttribute, strToken);
    }
    return bGood;
}

void CDaeTreeBuilder::ReportBadValue(daeElement& rElement, daeMetaAttribute& rAttribute,
                                     std::string_view strToken)
{
    if (rAttribute.isArrayAttribute() && strToken.empty())
    {
        m_rReport.Fail("Memory ran out in " + Describe(rElement));
        return;
    }
    const bool bValue = &rAttribute == rElement.getCharDataObject();
    const bool bBytes = bValue && rAttribute.isArrayAttribute() && m_objArray.IsOfBytes();
    const std::string strPlace =
        (bValue ? "in " : "for " + std::string(rAttribute.getName()) + " of ") + Describe(rElement);
    const std::string strText = "\"" + CDaeReport::Quote(strToken) + "\" " + strPlace + " is not " +
                                (bBytes ? "hexadecimal" : std::string(Noun(*rAttribute.getType())));
    // How exact an array's numbers are meant to be: exporters write nonsense here, and nothing depends on it.
    const bool bHint = !bValue && (std::string_view(rAttribute.getName()) == "digits" ||
                                   std::string_view(rAttribute.getName()) == "magnitude");
    // The bytes of an image are no reason to do without the rest.
    if (!m_arrFrames.back().bExtension && !bHint && !bBytes)
    {
        m_rReport.Fail(strText);
        return;
    }
    m_rReport.Notice(LOG_WARNING, strText);
    if (rAttribute.isArrayAttribute())
    {
        reinterpret_cast<daeArray*>(rAttribute.get(&rElement))->clear();
        m_arrFrames.back().eText = bValue ? EText::Ignored : m_arrFrames.back().eText;
    }
}
