// Object tables from texts of ASCII files, and what they hold as text.
#pragma once

#include "support/FBXTestScene.h"

using Lines = std::vector<std::string>;

inline std::unique_ptr<CFBXObjectTable> MakeTable(int nVersion, const std::string& rText)
{
    CQDString strError;
    return ReadFBXTable(FBXHeader(nVersion) + rText, strError);
}

// "Model Mesh Box"
inline std::string Describe(const CFBXObjectTable& rTable, int64_t nId)
{
    const CFBXObject* pObject = rTable.FindObject(nId);
    return pObject == nullptr ? "root"
                              : std::string(pObject->strClass) + " " + std::string(pObject->strKind) + " " +
                                    std::string(pObject->strName);
}

// One line for each object, with all that it is connected to: "Texture  Wood -> Material  Oak DiffuseColor".
inline Lines Describe(const CFBXObjectTable& rTable)
{
    Lines vecLines;
    for (const CFBXObject& rObject : rTable.GetObjects())
    {
        std::string strLine = Describe(rTable, rObject.nId);
        for (const CFBXConnection& rConnection : rTable.GetDestinations(rObject.nId))
        {
            strLine += " -> " + Describe(rTable, rConnection.nDestination);
            strLine +=
                rConnection.IsToProperty() ? " " + std::string(rConnection.strDestinationProperty) : "";
        }
        vecLines.push_back(strLine);
    }
    return vecLines;
}

inline std::vector<double> GetNumbers(const CFBXProperties& rProperties, std::string_view strName)
{
    std::vector<double> vecNumbers;
    if (const CFBXProperty* pProperty = rProperties.Find(strName))
    {
        for (size_t n = 0; n < pProperty->spanValues.size(); ++n)
        {
            vecNumbers.push_back(pProperty->GetDouble(n));
        }
    }
    return vecNumbers;
}
