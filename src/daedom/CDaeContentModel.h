// Which children the elements of the COLLADA schema take, and putting them there.
//
// It stands in for the DOM's own placing: that searches the content model anew for each child, in time that
// grows with the square of a parent's children, and crashes on elements that may not have any. Here the model
// of each kind of element is laid out once as a table; a child then costs one look-up and one append. What
// goes where is the same for documents that follow the schema. Of the children that the schema allows once,
// the first counts. A choice between children isn't enforced.
#pragma once

#include "daedom/CDaeAccess.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

class CDaeContentModel
{
  public:
    class CRules;

    // How one kind of child is made and placed.
    struct CRule
    {
        daeMetaElement* pMeta = nullptr;            // its type; null: made as a domAny
        daeMetaElementAttribute* pMember = nullptr; // where the parent keeps it; null: in its contents only
        daeUInt uiOrdinal = 0;                      // its place among the parent's contents
        const CRule* pWrapper = nullptr;            // the nameless element between it and the parent, if any
        CRules* pRules = nullptr;                   // its own children; laid out on first use
    };

    explicit CDaeContentModel(DAE& rDAE);
    CDaeContentModel(const CDaeContentModel&) = delete;
    CDaeContentModel& operator=(const CDaeContentModel&) = delete;
    ~CDaeContentModel();

    // The children of the elements of a type.
    CRules& GetRules(daeMetaElement& rMeta);
    // The rule for a child of that name; null when there can be none.
    const CRule* FindChild(CRules& rRules, std::string_view strName);
    // The rule of children that are kept as they are, whatever their name: they become a domAny. Null where
    // the element does not take them.
    static const CRule* FindAny(const CRules& rRules);

    // Makes the element and gives it to its parent, without attributes and text. Null when the parent has its
    // only one already. The parent's document must be set; the new element is entered in its database.
    static daeElement* AddChild(daeElement& rParent, const CRule& rRule, std::string_view strName);
    // Puts the contents of an element, which come in document order, into that of the schema, as the DOM
    // keeps them. To be called when its last child is added.
    static void SortContents(daeElement& rElement);

  private:
    static daeElement* Add(daeElement& rParent, const CRule& rRule, std::string_view strName, bool bContents);
    void AddModel(CRules& rRules, daeMetaCMPolicy& rModel, daeUInt uiOrdinal, const CRule* pWrapper);
    CRule* FindGlobal(std::string_view strName);

    DAE& m_rDAE;
    std::unordered_map<daeMetaElement*, std::unique_ptr<CRules>> m_mapRules;
    std::unique_ptr<CRules>
        m_spGlobals; // the types that stand for themselves inside an element that takes any
};
