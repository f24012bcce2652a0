// Objects, properties and connections of version 6, brought into the shape of version 7.
#include "fbxsdk/objects/FBXObjects6.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/objects/CFBXObjectTable.h"
#include "fbxsdk/objects/CFBXTextureDresser.h"
#include "fbxsdk/objects/FBXLegacySettings.h"
#include "fbxsdk/objects/FBXModelParts.h"
#include "fbxsdk/objects/FBXObjectName.h"
#include "fbxsdk/objects/FBXTakes.h"
#include "qdcommon/CLog.h"

#include <unordered_set>
#include <vector>

namespace
{

class CObjectReader
{
  public:
    explicit CObjectReader(CFBXObjectTable& rTable) : m_rTable(rTable), m_objDresser(rTable) {}

    // Of all connections, before the objects are read.
    void ReadSource(const CFBXRecord& rConnection) { m_setSources.insert(rConnection.GetString(1)); }

    void ReadObject(const CFBXRecord& rRecord)
    {
        if (rRecord.GetName() == "GlobalSettings")
        {
            m_rTable.GetGlobalSettings().pRecord = &rRecord;
            m_rTable.GetGlobalSettings().objProperties.Read(rRecord);
            return;
        }
        const std::string_view strFullName = rRecord.GetString(0);
        const std::string_view strKind = rRecord.GetString(1);
        if ((strKind == "Camera" || strKind == "CameraSwitcher") && !m_setSources.contains(strFullName))
        {
            // The views of the program that wrote the file, which are no part of the scene.
            return;
        }
        if (m_rTable.FindObjectByName(strFullName) != nullptr)
        {
            Log(FBXSDK, LOG_WARNING, "Ignoring the object %s: its name is that of another object.",
                rRecord.Describe());
            return;
        }
        CFBXObject objObject;
        objObject.strClass = rRecord.GetName();
        objObject.strName =
            CutFBXClash(CutFBXClass(strFullName, objObject.strClass, m_rTable.GetDocument().IsASCII()));
        objObject.strKind = strKind;
        objObject.pRecord = &rRecord;
        CFBXObject& rObject = m_rTable.AddUnnumberedObject(objObject);
        rObject.objProperties.Read(rRecord);
        m_rTable.AddName(strFullName, rObject);
        if (rObject.strClass == "Model")
        {
            m_mapParts.emplace(rObject.nId, SplitFBXModel(rObject, m_rTable));
        }
    }

    // Connect: "OP", "Texture::source", "Material::destination", "property".
    void ReadConnection(const CFBXRecord& rRecord)
    {
        CFBXConnection objConnection;
        size_t uiValue = 1;
        if (!ReadFBXConnectionKind(rRecord.GetString(0), objConnection.eKind))
        {
            return;
        }
        const CFBXObject* pSource = m_rTable.FindObjectByName(rRecord.GetString(uiValue++));
        if (objConnection.IsFromProperty())
        {
            objConnection.strSourceProperty = rRecord.GetString(uiValue++);
        }
        const std::string_view strDestination = rRecord.GetString(uiValue++);
        const CFBXObject* pDestination = m_rTable.FindObjectByName(strDestination);
        if (objConnection.IsToProperty())
        {
            objConnection.strDestinationProperty = rRecord.GetString(uiValue++);
        }
        if (pSource == nullptr || (pDestination == nullptr && !IsRootName(strDestination)))
        {
            Log(FBXSDK, LOG_DETAIL, "Ignoring the connection %s of unknown objects.", rRecord.Describe());
            return;
        }
        objConnection.nSource = pSource->nId;
        objConnection.nDestination = pDestination != nullptr ? pDestination->nId : CFBXObjectTable::ROOT_ID;
        AddConnection(objConnection, *pSource);
    }

    void Finish()
    {
        m_objDresser.Connect();
        ReadFBXTakes(m_rTable, m_mapParts);
    }

  private:
    static bool IsRootName(std::string_view strFullName)
    {
        return strFullName == "Model::Scene" || strFullName == std::string_view("Scene\0\1Model", 12);
    }

    // What version 7 connects to the geometry or the material of a model, version 6 connects to the model.
    void AddConnection(CFBXConnection objConnection, const CFBXObject& rSource)
    {
        const auto itParts = m_mapParts.find(objConnection.nDestination);
        if (itParts == m_mapParts.end() || objConnection.eKind != EFBXConnection::OO)
        {
            m_rTable.AddConnection(objConnection);
            return;
        }
        const CFBXObject* pGeometry = itParts->second.pAttribute;
        if (pGeometry == nullptr || pGeometry->strClass != "Geometry")
        {
            pGeometry = nullptr;
        }
        if (rSource.strClass == "Texture" || rSource.strClass == "LayeredTexture")
        {
            m_objDresser.AddTexture(objConnection.nDestination, pGeometry, rSource);
            return;
        }
        if (rSource.strClass == "Material")
        {
            m_objDresser.AddMaterial(objConnection.nDestination, pGeometry, rSource);
            return;
        }
        if (rSource.strClass == "Deformer" && pGeometry != nullptr)
        {
            objConnection.nDestination = pGeometry->nId;
        }
        m_rTable.AddConnection(objConnection);
    }

    CFBXObjectTable& m_rTable;
    CFBXTextureDresser m_objDresser;
    FBXModelPartsMap m_mapParts;
    std::unordered_set<std::string_view> m_setSources;
};

} // namespace

void ReadFBXObjects6(CFBXObjectTable& rTable)
{
    const CFBXRecord& rRoot = rTable.GetDocument().GetRoot();
    const CFBXRecord& rObjects = *rRoot.FindChild("Objects");
    std::vector<const CFBXRecord*> vecConnections;
    if (const CFBXRecord* pConnections = rRoot.FindChild("Connections"))
    {
        for (const CFBXRecord& rRecord : pConnections->GetChildren())
        {
            vecConnections.push_back(&rRecord);
        }
    }

    CObjectReader objReader(rTable);
    for (const CFBXRecord* pConnection : vecConnections)
    {
        objReader.ReadSource(*pConnection);
    }
    for (const CFBXRecord& rRecord : rObjects.GetChildren())
    {
        objReader.ReadObject(rRecord);
    }
    for (const CFBXRecord* pConnection : vecConnections)
    {
        objReader.ReadConnection(*pConnection);
    }
    objReader.Finish();
    if (const CFBXRecord* pVersion5 = rRoot.FindChild("Version5"))
    {
        ReadFBXLegacySettings(*pVersion5, rTable);
    }
}
