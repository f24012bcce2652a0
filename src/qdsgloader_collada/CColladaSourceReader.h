// How the kinds of data sources are read from the DOM; for their .cpp files only.
#pragma once

#include "qdsgloader_collada/CColladaAccessor.h"
#include "qdsgloader_collada/CColladaDom.h"

// Makes a KIND from a source over a DOM_ARRAY. fnConvert makes a primitive of an entry of the array. Null
// (reported) on failure.
template <class KIND, class DOM_ARRAY, class F>
boost::intrusive_ptr<KIND> ReadColladaSource(domSource& rSource, EColladaPrimitive ePrimitive,
                                             const char* szElementName, F fnConvert)
{
    CColladaAccessor objAccessor;
    if (!objAccessor.Setup(rSource, {ePrimitive, DOM_ARRAY::ID(), szElementName}))
    {
        return nullptr;
    }
    const auto arrEntries = AsSpan(static_cast<const DOM_ARRAY*>(objAccessor.GetArray())->getValue());
    boost::intrusive_ptr<KIND> spDataSource;
    if (objAccessor.CheckArrayLength(arrEntries.size()))
    {
        spDataSource = KIND::Create(objAccessor.GetPrimitivesPerValue(), objAccessor.GetNumValues());
    }
    if (!spDataSource)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create float array data source for <source id=\"%s\">",
            GetIDText(rSource));
        return nullptr;
    }
    const auto arrPrimitives = spDataSource->EditPrimitives();
    if (objAccessor.IsContiguous())
    {
        const auto arrUsed =
            arrEntries.subspan(arrPrimitives.empty() ? 0 : objAccessor.GetOffset(), arrPrimitives.size());
        std::ranges::transform(arrUsed, arrPrimitives.begin(), fnConvert);
    }
    else
    {
        auto itPrimitive = arrPrimitives.begin();
        objAccessor.ForEachEntry([&](size_t nEntry) { *itPrimitive++ = fnConvert(arrEntries[nEntry]); });
    }
    return spDataSource;
}
