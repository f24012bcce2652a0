// What the tests of reading COLLADA documents share: documents around a piece of text, and what is in them.
#pragma once

#include "daedom/CDaeFile.h"

#include <dae.h>
#include <dae/daeDocument.h>

#include <string>
#include <string_view>

inline std::string DaeTestDocument(std::string_view strContent)
{
    return "<?xml version=\"1.0\"?>\n<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" "
           "version=\"1.4.1\">" +
           std::string(strContent) + "</COLLADA>";
}

// An element and all below it, as "name attribute=value(text)[child child]" with the attributes that are set.
inline std::string DaeTestText(daeElement& rElement)
{
    std::string strText = rElement.getElementName();
    for (size_t n = 0; n < rElement.getAttributeCount(); ++n)
    {
        const std::string strName = rElement.getAttributeName(n);
        if (rElement.isAttributeSet(strName.c_str()))
        {
            strText += " " + strName + "=" + rElement.getAttribute(n);
        }
    }
    if (const std::string strData = rElement.getCharData(); !strData.empty())
    {
        strText += "(" + strData + ")";
    }
    const daeElementRefArray arrChildren = rElement.getChildren();
    for (size_t n = 0; n < arrChildren.getCount(); ++n)
    {
        strText += (n == 0 ? "[" : " ") + DaeTestText(*arrChildren[n]);
    }
    return arrChildren.getCount() > 0 ? strText + "]" : strText;
}

// The text of the first child of the root of a document that should load; the error otherwise.
inline std::string DaeTestLoad(std::string_view strDocument)
{
    CDaeFile objFile;
    if (!objFile.OpenMemory("test.dae", strDocument))
    {
        return objFile.GetErrorText();
    }
    const daeElementRefArray arrChildren = objFile.GetDocument()->getDomRoot()->getChildren();
    return arrChildren.getCount() == 0 ? "nothing" : DaeTestText(*arrChildren[0]);
}
