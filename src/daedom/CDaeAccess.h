// Parts of the COLLADA DOM that reading needs and that the DOM shows only to its own classes. Its public ways
// to the same ends (place, setDocument, append) cost time that grows with the square of a document's size.
// The classes here only lend access to their bases' members; none is ever made.
#pragma once

#include <dae.h>
#include <dae/daeMetaAttribute.h>
#include <dae/daeMetaCMPolicy.h>
#include <dae/daeMetaElement.h>
#include <dae/daeMetaElementAttribute.h>
#include <dae/daeMetaGroup.h>

struct CDaeElementAccess : daeElement
{
    static daeDocument*& Document(daeElement& rElement) { return rElement.*&CDaeElementAccess::_document; }
    static daeBoolArray& ValidAttributes(daeElement& rElement)
    {
        return rElement.*&CDaeElementAccess::_validAttributeArray;
    }
};

struct CDaeMetaAccess : daeMetaElement
{
    // The ordinals of an element's children, beside its contents and as many; null where an element keeps
    // none.
    static daeUIntArray* ContentsOrder(daeElement& rElement)
    {
        daeMetaArrayAttribute* pOrder = rElement.getMeta()->*&CDaeMetaAccess::_metaContentsOrder;
        return pOrder ? reinterpret_cast<daeUIntArray*>(pOrder->get(&rElement)) : nullptr;
    }
};

struct CDaeModelAccess : daeMetaCMPolicy
{
    static daeTArray<daeMetaCMPolicy*>& Children(daeMetaCMPolicy& rModel)
    {
        return rModel.*&CDaeModelAccess::_children;
    }
    static daeUInt Ordinal(const daeMetaCMPolicy& rModel) { return rModel.*&CDaeModelAccess::_ordinalOffset; }
};

struct CDaeGroupAccess : daeMetaGroup
{
    static daeMetaElementAttribute* Container(const daeMetaGroup& rGroup)
    {
        return rGroup.*&CDaeGroupAccess::_elementContainer;
    }
};

struct CDaeArrayAccess : daeArray
{
    static daeMemoryRef& Data(daeArray& rArray) { return rArray.*&CDaeArrayAccess::_data; }
    static size_t& Count(daeArray& rArray) { return rArray.*&CDaeArrayAccess::_count; }
    static size_t& Capacity(daeArray& rArray) { return rArray.*&CDaeArrayAccess::_capacity; }
};
