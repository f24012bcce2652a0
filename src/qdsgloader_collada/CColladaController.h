// What a <controller> comes to.
#pragma once

#include "qdsgloader_collada/CColladaSkinSet.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

// Controllers stand on a geometry or on each other: a skin on a morph, a morph on a skin.
struct CColladaController
{
    // The geometry at the start of the chain and its outermost skin; morphs, and skins below it, are read
    // over (reported). No geometry (reported) when the chain leads nowhere.
    static CColladaController FindSource(ColladaDOM141::domController& rController);

    ColladaDOM141::domGeometry* m_pGeometry = nullptr;
    ColladaDOM141::domController* m_pSkin = nullptr; // the controller that has it; null: none
    boost::intrusive_ptr<CColladaSkinSet> m_spSkins; // made of it; null: none, or it failed
};
