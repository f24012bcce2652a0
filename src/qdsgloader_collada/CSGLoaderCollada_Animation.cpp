// Animations.
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaIgnored.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

void CSGLoaderCollada::LoadAllAnimations()
{
    const domCOLLADA& rRoot = *GetRoot();
    CColladaIgnored objIgnored;
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_animation_clips_array()))
    {
        objIgnored.Add(
            "<animation_clip> elements in <library_animation_clips>: animations are not supported yet.",
            rspLibrary->getAnimation_clip_array().getCount());
    }
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_animations_array()))
    {
        objIgnored.Add("<animation> elements in <library_animations>: animations are not supported yet.",
                       rspLibrary->getAnimation_array().getCount());
    }
    objIgnored.LogAll();
}

bool CSGLoaderCollada::LoadAnimations(std::vector<CSGAnimation*>&)
{
    if (GetRoot() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Tried to load animatinos when no file was loaded.");
        return false;
    }
    LoadAllAnimations();
    return true;
}

boost::intrusive_ptr<CSGAnimation> CSGLoaderCollada::LoadDefaultAnimation()
{
    if (GetRoot() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Tried to load animation when no file was loaded.");
    }
    return nullptr;
}

boost::intrusive_ptr<CSGAnimation> CSGLoaderCollada::LoadAnimation(const CQDString&)
{
    if (GetRoot() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Tried to load animation when no file was loaded.");
    }
    return nullptr;
}
