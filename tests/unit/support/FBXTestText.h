// Texts of small ASCII FBX files:
//
//     MakeFBXFile(Object("Model", 1, "box", "Null", Properties({"Lcl Scaling 2,2,2"})) +
//                     Object("Material", 2, "red"),
//                 Connect({"1,0", "2,1"}))
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

using CValues = std::vector<std::string>;

inline std::string FBXHeader(int nVersion = 7400, const std::string& rMore = "")
{
    return "; FBX project file\nFBXHeaderExtension:  {\n FBXVersion: " + std::to_string(nVersion) + "\n" +
           rMore + "}\n";
}

// The content of the file's "Objects" and "Connections", and what else is in it.
inline std::string MakeFBXFile(const std::string& rObjects, const std::string& rConnections,
                               const std::string& rMore = "")
{
    return FBXHeader() + "Objects:  {\n" + rObjects + "}\nConnections:  {\n" + rConnections + "}\n" + rMore;
}

// Names before their values: "Lcl Scaling 2,2,2".
inline std::string Properties(const CValues& rValues, const std::string& rFlags = "")
{
    std::string strText = "Properties70: {\n";
    for (const std::string& rValue : rValues)
    {
        const size_t nEnd = rValue.rfind(' ');
        strText += "P: \"" + rValue.substr(0, nEnd) + "\", \"\", \"\", \"" + rFlags + "\"," +
                   rValue.substr(nEnd + 1) + "\n";
    }
    return strText + "}\n";
}

inline std::string Object(const std::string& rClass, int nID, const std::string& rName,
                          const std::string& rKind = "", const std::string& rContent = "")
{
    return rClass + ": " + std::to_string(nID) + ", \"" + rClass + "::" + rName + "\", \"" + rKind +
           "\" {\n" + rContent + "}\n";
}

inline std::string Array(const std::string& rName, const std::string& rNumbers)
{
    return rName + ": *" + std::to_string(1 + std::ranges::count(rNumbers, ',')) + " { a: " + rNumbers +
           " }\n";
}

// Source, destination, and a property of it: "5,3" and "4,3,DiffuseColor".
inline std::string Connect(const CValues& rEnds)
{
    std::string strText;
    for (const std::string& rEnd : rEnds)
    {
        const size_t nProperty = rEnd.find(',', rEnd.find(',') + 1);
        strText += nProperty == std::string::npos ? "C: \"OO\"," + rEnd + "\n"
                                                  : "C: \"OP\"," + rEnd.substr(0, nProperty) + ", \"" +
                                                        rEnd.substr(nProperty + 1) + "\"\n";
    }
    return strText;
}
