// Objects, properties and connections of version 7.
#include "fbxsdk/objects/FBXObjects7.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/objects/CFBXDefinitions.h"
#include "fbxsdk/objects/CFBXObjectTable.h"
#include "fbxsdk/objects/FBXModelParts.h"
#include "fbxsdk/objects/FBXObjectName.h"
#include "qdcommon/CLog.h"

#include <vector>

namespace
{

// Model: id, "Model::name", "Mesh" { ... }
void ReadObjects(const CFBXRecord& rObjects, const CFBXDefinitions& rDefinitions, CFBXObjectTable& rTable)
{
    const bool bASCII = rTable.GetDocument().IsASCII();
    for (const CFBXRecord& rRecord : rObjects.GetChildren())
    {
        if (!rRecord.GetValue(0).IsNumber())
        {
            Log(FBXSDK, LOG_WARNING, "Ignoring the object %s, which has no id.", rRecord.Describe());
            continue;
        }
        CFBXObject objObject;
        objObject.nId = rRecord.GetInt64(0);
        objObject.strClass = rRecord.GetName();
        objObject.strName = CutFBXClass(rRecord.GetString(1), objObject.strClass, bASCII);
        objObject.strKind = rRecord.GetString(2);
        objObject.pRecord = &rRecord;
        if (CFBXObject* pObject = rTable.AddObject(objObject))
        {
            pObject->objProperties.Read(rRecord);
            pObject->objProperties.SetTemplate(rDefinitions.Find(pObject->strClass, pObject->strKind));
        }
    }
}

// After all objects, whose ids those of the shapes must not take.
void AddShapes(CFBXObjectTable& rTable)
{
    std::vector<const CFBXObject*> vecGeometry;
    for (const CFBXObject& rObject : rTable.GetObjects())
    {
        if (rObject.strClass == "Geometry" && rObject.pRecord->FindChild("Shape") != nullptr)
        {
            vecGeometry.push_back(&rObject);
        }
    }
    for (const CFBXObject* pGeometry : vecGeometry)
    {
        AddFBXShapes(*pGeometry, rTable);
    }
}

// C: "OP", source, destination, "property"; with the source's property before the destination in "PO", "PP".
void ReadConnections(const CFBXRecord& rConnections, CFBXObjectTable& rTable)
{
    for (const CFBXRecord& rRecord : rConnections.GetChildren())
    {
        CFBXConnection objConnection;
        if (!ReadFBXConnectionKind(rRecord.GetString(0), objConnection.eKind))
        {
            Log(FBXSDK, LOG_DETAIL, "Ignoring the connection %s, which is of no known kind.",
                rRecord.Describe());
            continue;
        }
        size_t uiValue = 1;
        objConnection.nSource = rRecord.GetInt64(uiValue++, -1);
        if (objConnection.IsFromProperty())
        {
            objConnection.strSourceProperty = rRecord.GetString(uiValue++);
        }
        objConnection.nDestination = rRecord.GetInt64(uiValue++, -1);
        if (objConnection.IsToProperty())
        {
            objConnection.strDestinationProperty = rRecord.GetString(uiValue++);
        }
        rTable.AddConnection(objConnection);
    }
}

// The document's own object knows the current stack; files that came through other hands have it in the
// section of takes only.
void ReadActiveStack(const CFBXRecord& rRoot, CFBXObjectTable& rTable)
{
    std::string_view strStack;
    if (const CFBXRecord* pDocuments = rRoot.FindChild("Documents"))
    {
        if (const CFBXRecord* pDocument = pDocuments->FindChild("Document"))
        {
            CFBXProperties objProperties;
            objProperties.Read(*pDocument);
            strStack = objProperties.GetString("ActiveAnimStackName");
        }
    }
    if (const CFBXRecord* pTakes = rRoot.FindChild("Takes"); pTakes != nullptr && strStack.empty())
    {
        strStack = pTakes->GetChildString("Current");
    }
    rTable.SetActiveStackName(strStack);
}

} // namespace

bool ReadFBXObjects7(CFBXObjectTable& rTable, CQDString& rError)
{
    const CFBXRecord& rRoot = rTable.GetDocument().GetRoot();
    const CFBXRecord* pObjects = rRoot.FindChild("Objects");
    if (pObjects == nullptr)
    {
        rError = "The file has no objects.";
        return false;
    }
    const CFBXDefinitions objDefinitions(rRoot, rTable);
    ReadObjects(*pObjects, objDefinitions, rTable);
    AddShapes(rTable);
    if (const CFBXRecord* pConnections = rRoot.FindChild("Connections"))
    {
        ReadConnections(*pConnections, rTable);
    }
    if (const CFBXRecord* pSettings = rRoot.FindChild("GlobalSettings"))
    {
        CFBXObject& rSettings = rTable.GetGlobalSettings();
        rSettings.pRecord = pSettings;
        rSettings.objProperties.Read(*pSettings);
        rSettings.objProperties.SetTemplate(objDefinitions.Find("GlobalSettings", ""));
    }
    ReadActiveStack(rRoot, rTable);
    return true;
}
