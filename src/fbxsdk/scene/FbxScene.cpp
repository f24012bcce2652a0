#include "fbxsdk/scene/FbxScene.h"

#include "fbxsdk/objects/CFBXObjectTable.h"
#include "fbxsdk/scene/FbxGlobalSettings.h"
#include "fbxsdk/scene/FbxManager.h"
#include "qdcommon/CLogChecks.h"

FbxScene::FbxScene(CQDString strName) : m_strName(std::move(strName)) { Reset(nullptr); }

FbxScene::~FbxScene() = default;

FbxScene* FbxScene::Create(FbxManager* pManager, CQDString strName)
{
    QD_CHECK_ARG(pManager, nullptr);
    pManager->m_vecScenes.push_back(std::unique_ptr<FbxScene>(new FbxScene(std::move(strName))));
    return pManager->m_vecScenes.back().get();
}

void FbxScene::Reset(std::unique_ptr<CFBXObjectTable> spTable)
{
    m_mapObjects.clear();
    m_vecObjects.clear();
    m_vecLinks.clear();
    m_spTable = std::move(spTable);
    m_pRootNode = AddObject(FbxNode::CreateRoot());
    m_pGlobalSettings =
        AddObject(m_spTable != nullptr ? FbxGlobalSettings::Create(*m_spTable, m_spTable->GetGlobalSettings())
                                       : FbxGlobalSettings::CreateDefault());
}

std::string_view FbxScene::GetCreator() const
{
    return m_spTable != nullptr ? m_spTable->GetCreator() : std::string_view();
}

void FbxScene::Take(std::unique_ptr<FbxObject> spObject)
{
    spObject->m_pScene = this;
    // Of objects with one id (those made of others share it) the first is found.
    m_mapObjects.emplace(spObject->GetUniqueID(), spObject.get());
    m_vecObjects.push_back(std::move(spObject));
}

FbxObject* FbxScene::FindObject(int64_t nUniqueID) const
{
    const auto it = m_mapObjects.find(nUniqueID);
    return it != m_mapObjects.end() ? it->second : nullptr;
}
