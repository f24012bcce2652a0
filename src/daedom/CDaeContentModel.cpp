// Which children the elements of the COLLADA schema take, and putting them there.
#include "daedom/CDaeContentModel.h"

#include <1.4/dom/domAny.h>
#include <dae/daeDatabase.h>
#include <dae/daeDocument.h>
#include <dae/daeMetaAny.h>

#include <algorithm>
#include <deque>
#include <span>
#include <vector>

namespace
{

struct CTextHash
{
    using is_transparent = void;
    size_t operator()(std::string_view strText) const { return std::hash<std::string_view>()(strText); }
};

// The member of the parent that keeps one child.
daeElementRef& SingleMember(daeElement& rParent, daeMetaElementAttribute& rMember)
{
    return *reinterpret_cast<daeElementRef*>(rMember.getWritableMemory(&rParent));
}

// The array's own type is one of references to the child's class, which only the array itself knows: it makes
// the room, and references to elements of all classes are alike.
void AddToList(daeElement& rParent, daeMetaElementAttribute& rMember, daeElement& rChild)
{
    daeArray& rArray = *reinterpret_cast<daeArray*>(rMember.getWritableMemory(&rParent));
    const size_t nCount = rArray.getCount();
    rArray.setCount(nCount + 1);
    *reinterpret_cast<daeElementRef*>(rArray.getRaw(nCount)) = &rChild;
}

// An element's children of all kinds; null where it keeps none.
daeElementRefArray* Contents(daeElement& rElement)
{
    daeMetaElementArrayAttribute* pContents = rElement.getMeta()->getContents();
    return pContents ? reinterpret_cast<daeElementRefArray*>(pContents->getWritableMemory(&rElement))
                     : nullptr;
}

void AddToContents(daeElement& rParent, daeElement& rChild, daeUInt uiOrdinal)
{
    daeUIntArray* pOrder = CDaeMetaAccess::ContentsOrder(rParent);
    if (daeElementRefArray* pContents = Contents(rParent); pContents && pOrder)
    {
        pContents->append(&rChild);
        pOrder->append(uiOrdinal);
    }
}

} // namespace

class CDaeContentModel::CRules
{
  public:
    std::unordered_map<std::string, CRule, CTextHash, std::equal_to<>> mapByName;
    std::deque<CRule> arrWrappers; // pointed to by the rules
    std::unique_ptr<CRule> spAny;
};

CDaeContentModel::CDaeContentModel(DAE& rDAE) : m_rDAE(rDAE) {}

CDaeContentModel::~CDaeContentModel() = default;

CDaeContentModel::CRules& CDaeContentModel::GetRules(daeMetaElement& rMeta)
{
    std::unique_ptr<CRules>& rspRules = m_mapRules[&rMeta];
    if (!rspRules)
    {
        rspRules = std::make_unique<CRules>();
        if (rMeta.getCMRoot())
        {
            AddModel(*rspRules, *rMeta.getCMRoot(), 0, nullptr);
        }
    }
    return *rspRules;
}

// The first mention of a name counts: where a choice repeats one, all its mentions go to the same member, in
// the same order relative to the others.
void CDaeContentModel::AddModel(CRules& rRules, daeMetaCMPolicy& rModel, daeUInt uiOrdinal,
                                const CRule* pWrapper)
{
    uiOrdinal += CDaeModelAccess::Ordinal(rModel);
    if (auto* pGroup = dynamic_cast<daeMetaGroup*>(&rModel))
    {
        daeMetaElementAttribute* pContainer = CDaeGroupAccess::Container(*pGroup);
        daeMetaElement* pType = pContainer ? pContainer->getElementType() : nullptr;
        if (pType && pType->getCMRoot() && !pWrapper)
        {
            rRules.arrWrappers.push_back({pType, pContainer, uiOrdinal, nullptr, nullptr});
            AddModel(rRules, *pType->getCMRoot(), 0, &rRules.arrWrappers.back());
        }
    }
    else if (auto* pMember = dynamic_cast<daeMetaElementAttribute*>(&rModel))
    {
        if (pMember->getElementType() && !pMember->getElementType()->getIsAbstract())
        {
            rRules.mapByName.try_emplace(
                std::string(pMember->getName()),
                CRule{pMember->getElementType(), pMember, uiOrdinal, pWrapper, nullptr});
        }
    }
    else if (dynamic_cast<daeMetaAny*>(&rModel))
    {
        rRules.spAny = std::make_unique<CRule>();
        rRules.spAny->uiOrdinal = uiOrdinal;
        rRules.spAny->pRules = &rRules; // what is kept as it is takes anything in turn
    }
    else
    {
        daeTArray<daeMetaCMPolicy*>& rChildren = CDaeModelAccess::Children(rModel);
        for (size_t n = 0; n < rChildren.getCount(); ++n)
        {
            AddModel(rRules, *rChildren[n], uiOrdinal, pWrapper);
        }
    }
}

const CDaeContentModel::CRule* CDaeContentModel::FindChild(CRules& rRules, std::string_view strName)
{
    CRule* pRule = nullptr;
    if (const auto it = rRules.mapByName.find(strName); it != rRules.mapByName.end())
    {
        pRule = &it->second;
    }
    else if (rRules.spAny)
    {
        pRule = FindGlobal(strName);
        if (!pRule)
        {
            return rRules.spAny.get();
        }
    }
    if (pRule && !pRule->pRules)
    {
        pRule->pRules = &GetRules(*pRule->pMeta);
    }
    return pRule;
}

const CDaeContentModel::CRule* CDaeContentModel::FindAny(const CRules& rRules) { return rRules.spAny.get(); }

CDaeContentModel::CRule* CDaeContentModel::FindGlobal(std::string_view strName)
{
    if (!m_spGlobals)
    {
        m_spGlobals = std::make_unique<CRules>();
        const daeMetaElementRefArray& rMetas = m_rDAE.getAllMetas();
        for (size_t n = 0; n < rMetas.getCount(); ++n)
        {
            daeMetaElement* pMeta = rMetas[n];
            if (pMeta && !pMeta->getIsInnerClass() && !pMeta->getIsAbstract())
            {
                m_spGlobals->mapByName.try_emplace(std::string(pMeta->getName()),
                                                   CRule{pMeta, nullptr, 0, nullptr, nullptr});
            }
        }
    }
    const auto it = m_spGlobals->mapByName.find(strName);
    return it != m_spGlobals->mapByName.end() ? &it->second : nullptr;
}

daeElement* CDaeContentModel::AddChild(daeElement& rParent, const CRule& rRule, std::string_view strName)
{
    if (!rRule.pWrapper)
    {
        return Add(rParent, rRule, strName, true);
    }
    // The DOM shows the child among the contents of both, and the wrapper nowhere.
    const CRule& rWrapper = *rRule.pWrapper;
    daeElement* pWrapper =
        rWrapper.pMember->isArrayAttribute() ? nullptr : SingleMember(rParent, *rWrapper.pMember).cast();
    if (!pWrapper)
    {
        pWrapper = Add(rParent, rWrapper, std::string_view(rWrapper.pMember->getName()), false);
    }
    daeElement* pChild = Add(*pWrapper, rRule, strName, true);
    if (pChild)
    {
        AddToContents(rParent, *pChild, rWrapper.uiOrdinal + rRule.uiOrdinal);
    }
    return pChild;
}

void CDaeContentModel::SortContents(daeElement& rElement)
{
    daeUIntArray* pOrder = CDaeMetaAccess::ContentsOrder(rElement);
    daeElementRefArray* pContents = Contents(rElement);
    if (!pContents || !pOrder || pOrder->getCount() < 2)
    {
        return;
    }
    const std::span<daeUInt> arrOrder(&(*pOrder)[0], pOrder->getCount());
    if (std::ranges::is_sorted(arrOrder))
    {
        return;
    }
    std::vector<std::pair<daeUInt, daeElementRef>> arrSorted;
    arrSorted.reserve(arrOrder.size());
    for (size_t n = 0; n < arrOrder.size(); ++n)
    {
        arrSorted.emplace_back(arrOrder[n], (*pContents)[n]);
    }
    std::ranges::stable_sort(arrSorted, {}, &std::pair<daeUInt, daeElementRef>::first);
    for (size_t n = 0; n < arrOrder.size(); ++n)
    {
        arrOrder[n] = arrSorted[n].first;
        (*pContents)[n] = arrSorted[n].second;
    }
}

daeElement* CDaeContentModel::Add(daeElement& rParent, const CRule& rRule, std::string_view strName,
                                  bool bContents)
{
    const bool bSingle = rRule.pMember && !rRule.pMember->isArrayAttribute();
    if (bSingle && SingleMember(rParent, *rRule.pMember))
    {
        return nullptr;
    }
    daeMetaElement* pMeta =
        rRule.pMeta ? rRule.pMeta : ColladaDOM141::domAny::registerElement(*rParent.getDAE());
    daeElementRef spChild = pMeta->create();
    if (strName != std::string_view(pMeta->getName()))
    {
        spChild->setElementName(std::string(strName).c_str());
    }
    if (bSingle)
    {
        SingleMember(rParent, *rRule.pMember) = spChild;
    }
    else if (rRule.pMember)
    {
        AddToList(rParent, *rRule.pMember, *spChild);
    }
    if (bContents)
    {
        AddToContents(rParent, *spChild, rRule.uiOrdinal);
    }
    spChild->setParentElement(&rParent);

    // Set here and not through setDocument, which resolves each URI that the element might have: they are
    // resolved when they are set.
    daeDocument* pDocument = rParent.getDocument();
    CDaeElementAccess::Document(*spChild) = pDocument;
    pDocument->getDatabase()->insertElement(pDocument, spChild);
    return spChild;
}
