// Parses a document from a file of its own, and tells what was logged as errors.
#pragma once

#include "animxml/CBexnelParser.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

// "parsed", or the lines at the error level, without the folder's name.
inline std::string ParseXml(const CXMLElementParserPtr& spTopLevelParser, const std::string& rDocument)
{
    const CTempFile objFile("a.anim", rDocument);
    const std::string strFolder = objFile.GetName().substr(0, objFile.GetName().rfind('/') + 1);
    CLogCapture objLog;
    std::string strResult = CBexnelParser(spTopLevelParser).ParseFile(objFile.GetName()) ? "parsed\n" : "";
    for (const std::string& rLine : objLog.GetLines())
    {
        if (rLine.starts_with("1 "))
        {
            strResult += rLine.substr(2) + "\n";
        }
    }
    for (size_t n; (n = strResult.find(strFolder)) != std::string::npos;)
    {
        strResult.erase(n, strFolder.size());
    }
    strResult.pop_back();
    return strResult;
}

inline std::string Repeat(const std::string& rText, int nTimes)
{
    std::string strResult;
    for (int n = 0; n < nTimes; ++n)
    {
        strResult += rText;
    }
    return strResult;
}
