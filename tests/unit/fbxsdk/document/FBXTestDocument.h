// Small documents, and what a document holds as one line of text.
#pragma once

#include "fbxsdk/document/CFBXDocument.h"
#include "support/FBXTestFile.h"

#include <iomanip>
#include <sstream>

inline std::unique_ptr<CFBXDocument> ParseText(std::string_view strText, CQDString& rError)
{
    return CFBXDocument::FromBytes({strText.begin(), strText.end()}, rError);
}

// "Name(1,1.5,'text',[1 2 3]){Child()Child()}": arrays, and rows of numbers that are kept as such, in
// brackets.
inline std::string Describe(const CFBXRecord& rRecord)
{
    std::ostringstream objText;
    objText << std::setprecision(9) << rRecord.GetName() << "(";
    for (const CFBXValue& rValue : rRecord.GetValues())
    {
        objText << (&rValue == rRecord.GetValues().data() ? "" : ",");
        if (rValue.IsArray())
        {
            std::vector<double> vecNumbers;
            objText << (rRecord.ReadDoubles(vecNumbers) ? "[" : "[damaged");
            for (size_t n = 0; n < vecNumbers.size(); ++n)
            {
                objText << (n > 0 ? " " : "") << vecNumbers[n];
            }
            objText << "]";
        }
        else if (rValue.IsNumber())
        {
            objText << rValue.GetDouble();
        }
        else
        {
            objText << "'" << rValue.GetString() << "'";
        }
    }
    objText << ")" << (rRecord.HasChildren() ? "{" : "");
    for (const CFBXRecord& rChild : rRecord.GetChildren())
    {
        objText << Describe(rChild);
    }
    objText << (rRecord.HasChildren() ? "}" : "");
    return objText.str();
}
