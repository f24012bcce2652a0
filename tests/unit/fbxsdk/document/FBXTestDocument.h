// Small documents, and what a document holds as one line of text.
#pragma once

#include "fbxsdk/document/CFBXDocument.h"
#include "support/FBXTestFile.h"

#include <cstdio>
#include <string>

inline std::unique_ptr<CFBXDocument> ParseText(std::string_view strText, CQDString& rError)
{
    return CFBXDocument::FromBytes({strText.begin(), strText.end()}, rError);
}

inline std::string DescribeNumber(double dNumber)
{
    char arrText[32];
    std::snprintf(arrText, sizeof(arrText), "%.9g", dNumber);
    return arrText;
}

// "Name(1,1.5,'text',[1 2 3]){Child()Child()}": arrays, and rows of numbers that are kept as such, in
// brackets.
inline std::string Describe(const CFBXRecord& rRecord)
{
    std::string strText(rRecord.GetName());
    std::string strValues;
    for (const CFBXValue& rValue : rRecord.GetValues())
    {
        strValues += strValues.empty() ? "" : ",";
        if (rValue.IsArray())
        {
            std::vector<double> vecNumbers;
            std::string strNumbers = rRecord.ReadDoubles(vecNumbers) ? "" : "damaged";
            for (const double dNumber : vecNumbers)
            {
                strNumbers += (strNumbers.empty() ? "" : " ") + DescribeNumber(dNumber);
            }
            strValues += "[" + strNumbers + "]";
        }
        else
        {
            strValues += rValue.IsNumber() ? DescribeNumber(rValue.GetDouble())
                                           : "'" + std::string(rValue.GetString()) + "'";
        }
    }
    strText += "(" + strValues + ")";
    if (rRecord.HasChildren())
    {
        strText += "{";
        for (const CFBXRecord& rChild : rRecord.GetChildren())
        {
            strText += Describe(rChild);
        }
        strText += "}";
    }
    return strText;
}
