#include "qdsgloader_collada/CColladaController.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

namespace
{

// A chain without end leads nowhere, and neither does a long one.
constexpr int MAX_CHAINED_CONTROLLERS = 16;

} // namespace

CColladaController CColladaController::FindSource(domController& rController)
{
    CColladaController objResult;
    std::vector<const domController*> vecIgnored;
    domController* pController = &rController;
    for (int n = 0; n < MAX_CHAINED_CONTROLLERS; ++n)
    {
        domSkin* pSkin = pController->getSkin();
        domMorph* pMorph = pController->getMorph();
        if (pSkin == nullptr && pMorph == nullptr)
        {
            Log(QD_COLLADA, LOG_ERROR, "<controller id=\"%s\"> had neither a <skin> nor a <morph>",
                GetIDText(*pController));
            return {};
        }
        const daeURI& rSource = pSkin != nullptr ? pSkin->getSource() : pMorph->getSource();
        daeElement* pElement = CSGLoaderCollada::FindURIElement(rSource, domGeometry::ID());
        const bool bGeometry = pElement != nullptr && pElement->typeID() == domGeometry::ID();
        if (!bGeometry && (pElement == nullptr || pElement->typeID() != domController::ID()))
        {
            Log(QD_COLLADA, LOG_ERROR, "Reference to unknown geometry in <%s id=\"%s\">",
                pSkin != nullptr ? "skin" : "morph", GetIDText(*pController));
            return {};
        }
        if (pSkin != nullptr && objResult.m_pSkin == nullptr)
        {
            objResult.m_pSkin = pController;
        }
        else
        {
            vecIgnored.push_back(pController);
        }
        if (bGeometry)
        {
            objResult.m_pGeometry = static_cast<domGeometry*>(pElement);
            for (const domController* pIgnored : vecIgnored)
            {
                Log(QD_COLLADA, LOG_WARNING,
                    "Ignoring <%s> in <controller id=\"%s\">: what it stands on is shown",
                    pIgnored->getSkin() != nullptr ? "skin" : "morph", GetIDText(*pIgnored));
            }
            return objResult;
        }
        pController = static_cast<domController*>(pElement);
    }
    Log(QD_COLLADA, LOG_ERROR, "<controller id=\"%s\"> leads to itself or over more than %d controllers",
        GetIDText(rController), MAX_CHAINED_CONTROLLERS);
    return {};
}
