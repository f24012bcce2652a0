// Models of old files with their transforms, materials, textures and joints, brought into the shape of
// version 7.
#include "fbxsdk/objects/FBXObjects5.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/objects/CFBXObjectTable.h"
#include "fbxsdk/objects/CFBXTextureDresser.h"
#include "fbxsdk/objects/FBXLegacyProperties.h"
#include "fbxsdk/objects/FBXLegacySettings.h"
#include "fbxsdk/objects/FBXModelParts.h"
#include "fbxsdk/objects/FBXObjectName.h"
#include "fbxsdk/objects/FBXTakes.h"
#include "qdcommon/CLog.h"

#include <unordered_map>
#include <unordered_set>

namespace
{

class CObjectReader
{
  public:
    explicit CObjectReader(CFBXObjectTable& rTable) : m_rTable(rTable), m_objDresser(rTable) {}

    // Video: "name" { Filename: "..." }
    void ReadVideos(const CFBXRecord& rMedia)
    {
        if (const CFBXRecord* pVideos = rMedia.FindChild("Video"))
        {
            for (const CFBXRecord& rVideo : pVideos->GetChildren())
            {
                AddNamed(rVideo, "Clip", m_mapVideos);
            }
        }
    }

    void ReadModel(const CFBXRecord& rRecord)
    {
        CFBXObject objModel = MakeObject(rRecord);
        objModel.strKind = GetKind(rRecord);
        CFBXObject& rModel = m_rTable.AddUnnumberedObject(objModel);
        if (!m_rTable.AddName(rRecord.GetString(0), rModel))
        {
            Log(FBXSDK, LOG_WARNING, "The model %s has the name of another one.", rRecord.Describe());
        }
        ReadFBXLegacyModel(rRecord, m_rTable, rModel.objProperties);
        m_vecModels.push_back(&rModel);
    }

    // Once all models are known: they refer to each other.
    void ConnectModels()
    {
        for (CFBXObject* pModel : m_vecModels)
        {
            SFBXModelParts objParts = SplitFBXModel(*pModel, m_rTable);
            ReadParts(*pModel, objParts.pAttribute);
            m_mapParts.emplace(pModel->nId, std::move(objParts));
        }
        for (const CFBXObject* pModel : m_vecModels)
        {
            if (!m_setChildren.contains(pModel->nId))
            {
                m_rTable.AddConnection({pModel->nId, CFBXObjectTable::ROOT_ID});
            }
        }
        m_objDresser.Connect();
    }

    // The values that a model has without any keys stand among the takes.
    void ReadTakes()
    {
        const CFBXRecord* pTakes = m_rTable.GetDocument().GetRoot().FindChild("Takes");
        const CFBXRecord* pTake = pTakes != nullptr ? pTakes->FindChild("Take") : nullptr;
        if (pTake != nullptr)
        {
            for (const CFBXRecord& rRecord : pTake->GetChildren())
            {
                CFBXObject* pObject =
                    rRecord.GetName() == "Model" ? m_rTable.FindObjectByName(rRecord.GetString(0)) : nullptr;
                if (pObject != nullptr)
                {
                    ReadFBXLegacyTransform(rRecord, m_rTable, pObject->objProperties);
                }
            }
        }
        ReadFBXTakes(m_rTable, m_mapParts);
    }

    bool HasModels() const { return !m_vecModels.empty(); }

  private:
    using ObjectMap = std::unordered_map<std::string_view, const CFBXObject*>;

    CFBXObject MakeObject(const CFBXRecord& rRecord) const
    {
        CFBXObject objObject;
        objObject.strClass = rRecord.GetName();
        objObject.strName =
            CutFBXClass(rRecord.GetString(0), objObject.strClass, m_rTable.GetDocument().IsASCII());
        objObject.pRecord = &rRecord;
        return objObject;
    }

    // Each model repeats the materials and textures that it shares with others.
    const CFBXObject& AddNamed(const CFBXRecord& rRecord, std::string_view strKind, ObjectMap& rMap)
    {
        const auto [it, bNew] = rMap.emplace(rRecord.GetString(0), nullptr);
        if (bNew)
        {
            CFBXObject objObject = MakeObject(rRecord);
            objObject.strKind = strKind;
            CFBXObject& rObject = m_rTable.AddUnnumberedObject(objObject);
            if (rObject.strClass == "Material")
            {
                ReadFBXLegacyMaterial(rRecord, m_rTable, rObject.objProperties);
            }
            it->second = &rObject;
        }
        return *it->second;
    }

    static std::string_view GetKind(const CFBXRecord& rModel)
    {
        if (rModel.FindChild("PolygonVertexIndex") != nullptr)
        {
            return "Mesh";
        }
        // A camera has a second, numeric "Type".
        const std::string_view strType = rModel.GetChildString("Type");
        return !strType.empty() ? strType : rModel.GetChildString("TypeFlags");
    }

    void ReadParts(const CFBXObject& rModel, const CFBXObject* pAttribute)
    {
        const CFBXObject* pGeometry =
            pAttribute != nullptr && pAttribute->strClass == "Geometry" ? pAttribute : nullptr;
        const CFBXObject* pSkin = nullptr;
        for (const CFBXRecord& rPart : rModel.pRecord->GetChildren())
        {
            if (rPart.GetName() == "Children")
            {
                AddChildren(rModel, rPart);
            }
            else if (rPart.GetName() == "Material")
            {
                m_objDresser.AddMaterial(rModel.nId, pGeometry, AddNamed(rPart, "", m_mapMaterials));
            }
            else if (rPart.GetName() == "Texture" && rPart.HasChildren())
            {
                m_objDresser.AddTexture(rModel.nId, pGeometry, AddTexture(rPart));
            }
            else if (rPart.GetName() == "Link" && pGeometry != nullptr)
            {
                pSkin = pSkin != nullptr ? pSkin : &AddDeformer("Skin", nullptr, pGeometry->nId);
                AddJoint(rPart, *pSkin);
            }
        }
    }

    void AddChildren(const CFBXObject& rModel, const CFBXRecord& rChildren)
    {
        for (const CFBXValue& rName : rChildren.GetValues())
        {
            const CFBXObject* pChild = m_rTable.FindObjectByName(rName.GetString());
            if (pChild == nullptr)
            {
                Log(FBXSDK, LOG_INFO, "Model '%s' has an unknown child '%s'.", CQDString(rModel.strName),
                    CQDString(rName.GetString()));
            }
            else if (pChild != &rModel && m_setChildren.insert(pChild->nId).second)
            {
                m_rTable.AddConnection({pChild->nId, rModel.nId});
            }
        }
    }

    const CFBXObject& AddTexture(const CFBXRecord& rRecord)
    {
        const size_t uiKnown = m_mapTextures.size();
        const CFBXObject& rTexture = AddNamed(rRecord, "", m_mapTextures);
        const auto itVideo = m_mapVideos.find(rRecord.GetChildString("Media"));
        if (m_mapTextures.size() != uiKnown && itVideo != m_mapVideos.end())
        {
            m_rTable.AddConnection({itVideo->second->nId, rTexture.nId});
        }
        return rTexture;
    }

    const CFBXObject& AddDeformer(std::string_view strKind, const CFBXRecord* pRecord, int64_t nDestination)
    {
        CFBXObject objDeformer;
        objDeformer.strClass = "Deformer";
        objDeformer.strKind = strKind;
        objDeformer.pRecord = pRecord;
        const CFBXObject& rDeformer = m_rTable.AddUnnumberedObject(objDeformer);
        m_rTable.AddConnection({rDeformer.nId, nDestination});
        return rDeformer;
    }

    // Link: "Model::joint" { Indexes, Weights, Transform, TransformLink }
    void AddJoint(const CFBXRecord& rLink, const CFBXObject& rSkin)
    {
        const CFBXObject* pJoint = m_rTable.FindObjectByName(rLink.GetString(0));
        if (pJoint == nullptr)
        {
            Log(FBXSDK, LOG_WARNING, "Ignoring the joint %s, which is no model of the file.",
                rLink.Describe());
            return;
        }
        m_rTable.AddConnection({pJoint->nId, AddDeformer("Cluster", &rLink, rSkin.nId).nId});
    }

    CFBXObjectTable& m_rTable;
    CFBXTextureDresser m_objDresser;
    std::vector<CFBXObject*> m_vecModels;
    FBXModelPartsMap m_mapParts;
    std::unordered_set<int64_t> m_setChildren;
    ObjectMap m_mapMaterials;
    ObjectMap m_mapTextures;
    ObjectMap m_mapVideos;
};

} // namespace

bool ReadFBXObjects5(CFBXObjectTable& rTable, CQDString& rError)
{
    const CFBXRecord& rRoot = rTable.GetDocument().GetRoot();
    CObjectReader objReader(rTable);
    if (const CFBXRecord* pMedia = rRoot.FindChild("Media"))
    {
        objReader.ReadVideos(*pMedia);
    }
    for (const CFBXRecord& rRecord : rRoot.GetChildren())
    {
        if (rRecord.GetName() == "Model")
        {
            objReader.ReadModel(rRecord);
        }
    }
    if (!objReader.HasModels() && rRoot.FindChild("Takes") == nullptr)
    {
        rError = "The file has no objects.";
        return false;
    }
    objReader.ConnectModels();
    objReader.ReadTakes();
    ReadFBXLegacySettings(rRoot, rTable);
    return true;
}
