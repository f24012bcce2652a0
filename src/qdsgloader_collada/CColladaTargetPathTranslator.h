// From the target of a COLLADA channel to a reference into the scene graph.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/material/CSGMaterial.h"
#include "qdsgloader_collada/CColladaAnimTarget.h"
#include "qdsgloader_collada/CColladaSidIndex.h"
#include "qdsgloader_collada/CColladaTargetPath.h"

#include <unordered_map>

// References name what they lead to, so the scene graph need not be there yet. These can be animated:
//   - NODE/TRANSFORM, a whole <translate>, <scale> or <matrix>; X, Y or Z of the former two; ANGLE of a
//     <rotate>
//   - NODE/visibility, of the node's extra data, also by way of two elements with sids between them
//   - EFFECT/TECHNIQUE/COLOR, a whole <color> in emission, ambient, diffuse, specular or transparent; R, G,
//     B or A of it; every material that has the colour from the effect changes
class CColladaTargetPathTranslator
{
  public:
    // The document must outlive the translator and not change.
    explicit CColladaTargetPathTranslator(ColladaDOM141::domCOLLADA& rRoot) : m_rRoot(rRoot) {}

    // Without a reference (reported) for what is not there or cannot be animated.
    CColladaAnimTarget TranslatePath(const CQDString& rStrPath);

  private:
    // What a path leads to, whatever its member is.
    enum class EKind
    {
        Unknown,
        Translate,
        Rotate,
        Scale,
        Matrix,
        LookAt,
        Visibility,
        Color
    };
    struct CMember;
    struct CTranslation
    {
        const CColladaTargetPath& m_rPath;
        CQDCompactString m_strStartName{}; // of the node or the material
        EKind m_eKind = EKind::Unknown;
        CSGMaterial::EParam m_eParam = CSGMaterial::PARAM_COUNT;
    };

    // Each reads one part of the path; false (reported) on failure.
    bool TranslatePathStart(CTranslation& rTranslation);
    static bool TranslatePathAtom(CTranslation& rTranslation, int32_t nIndex);
    static bool TranslatePathTarget(const CTranslation& rTranslation, CColladaAnimTarget& rTarget);

    static bool TranslateNodeChild(CTranslation& rTranslation, int32_t nIndex);
    static bool TranslateEffectColor(CTranslation& rTranslation, int32_t nIndex);
    static bool TranslateNodeExtra(CTranslation& rTranslation, int32_t nIndex);
    static CSGRefPathPtr CreateRef(const CTranslation& rTranslation, ETarget eTarget);
    void NameMaterials();
    // The name of the first material of the effect that a geometry is drawn with, else of its first one;
    // empty without one.
    CQDCompactString GetMaterialName(const daeElement& rEffect);

    ColladaDOM141::domCOLLADA& m_rRoot;
    CColladaSidIndex m_objSids;
    bool m_bMaterialsNamed = false;
    std::unordered_map<const daeElement*, CQDCompactString> m_mapMaterialNames; // by effect
};
