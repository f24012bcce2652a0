// Controllers.
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaController.h"
#include "qdsgloader_collada/CColladaDataSourceCache.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaGeometrySet.h"
#include "qdsgloader_collada/CColladaJointNames.h"
#include "qdsgloader_collada/CColladaSkinData.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

const CColladaController& CSGLoaderCollada::LoadController(domController& rController)
{
    const auto [it, bNew] = m_mapControllers.try_emplace(&rController);
    CColladaController& rResult = it->second;
    if (!bNew)
    {
        return rResult;
    }
    rResult = CColladaController::FindSource(rController);
    const CColladaGeometrySet* pGeometries =
        rResult.m_pGeometry != nullptr ? LoadGeometry(*rResult.m_pGeometry) : nullptr;
    if (rResult.m_pSkin != nullptr && pGeometries != nullptr)
    {
        rResult.m_spSkins = LoadSkin(*rResult.m_pSkin, *pGeometries);
        if (!rResult.m_spSkins)
        {
            Log(QD_COLLADA, LOG_WARNING,
                "Ignoring <skin> in <controller id=\"%s\">: its geometry is shown as it is",
                GetIDText(*rResult.m_pSkin));
        }
    }
    return rResult;
}

boost::intrusive_ptr<CColladaSkinSet> CSGLoaderCollada::LoadSkin(domController& rController,
                                                                 const CColladaGeometrySet& rGeometries)
{
    if (!m_spJointNames)
    {
        m_spJointNames = std::make_unique<CColladaJointNames>(*GetRoot());
    }
    domSkin& rSkin = *rController.getSkin();
    CColladaSkinData objData(GetIDText(rController), *m_spDataSources, *m_spJointNames);
    const bool bLoaded = objData.Load(rSkin);
    m_spDataSources->DropSourcesOf(rSkin);
    if (!bLoaded)
    {
        return nullptr;
    }
    boost::intrusive_ptr<CColladaSkinSet> spSkins = new CColladaSkinSet;
    for (int32_t n = 0; n < rGeometries.GetNumGeometries(); ++n)
    {
        const CDeindexedVertexBuffer& rVertexBuffer = rGeometries.GetGeometry(n)->GetDeindexedVertexBuffer();
        const boost::intrusive_ptr<CSGSkin> spSkin = objData.CreateSkin(rVertexBuffer);
        if (!spSkin || !spSkins->AddSkin(CColladaSkin::Create(spSkin, &rVertexBuffer)))
        {
            return nullptr;
        }
    }
    return spSkins;
}
