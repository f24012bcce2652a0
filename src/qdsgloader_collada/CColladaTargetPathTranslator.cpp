#include "qdsgloader_collada/CColladaTargetPathTranslator.h"

#include "qdcommon/CLogChecks.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaMaterials.h"
#include "qdsgloader_collada/CColladaNodeConverter.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include <1.4/dom/domCommon_color_or_texture_type.h>
#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace
{

bool IsNamed(const daeElement& rElement, std::string_view strName)
{
    return Text(rElement.getElementName()) == strName;
}

// Whether the element is <extra><technique><visibility> in the node.
bool IsVisibilityOf(daeElement& rElement, const daeElement& rNode)
{
    daeElement* pTechnique = rElement.getParentElement();
    daeElement* pExtra = pTechnique != nullptr ? pTechnique->getParentElement() : nullptr;
    return pExtra != nullptr && IsNamed(*pTechnique, "technique") && IsNamed(*pExtra, "extra") &&
           pExtra->getParentElement() == &rNode;
}

} // namespace

// What a member selects of what a path leads to.
struct CColladaTargetPathTranslator::CMember
{
    EKind eKind;
    std::string_view strMember;
    ETarget eTarget;
    int32_t nOutputCount;
    EColladaValues eValues = EColladaValues::Plain;
};

CColladaAnimTarget CColladaTargetPathTranslator::TranslatePath(const CQDString& rStrPath)
{
    const boost::intrusive_ptr<CColladaTargetPath> spPath = new CColladaTargetPath(rStrPath);
    const CColladaAnimTarget objNone;
    QD_CHECK_OR_RETURN(spPath->ResolveElements(*m_rRoot.getDAE(), m_objSids), "Assert '%s' failed",
                       "spPath->ResolveElements(pDAE)", objNone);
    CTranslation objTranslation{*spPath};
    if (!TranslatePathStart(objTranslation))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to translate the start of path \"%s\"", rStrPath);
        return objNone;
    }
    for (int32_t n = 1; n < spPath->GetNumAtoms(); ++n)
    {
        if (!TranslatePathAtom(objTranslation, n))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to translate the atom at %d for path \"%s\"", n, rStrPath);
            return objNone;
        }
    }
    CColladaAnimTarget objTarget;
    if (!TranslatePathTarget(objTranslation, objTarget))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to translate the target for path \"%s\"", rStrPath);
        return objNone;
    }
    return objTarget;
}

bool CColladaTargetPathTranslator::TranslatePathStart(CTranslation& rTranslation)
{
    daeElement* pStart = rTranslation.m_rPath.GetAtom(0).GetElement();
    if (pStart == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Had NULL start element");
        return false;
    }
    if (pStart->typeID() == domNode::ID())
    {
        rTranslation.m_strStartName = CColladaNodeConverter::GetGlobalName(static_cast<domNode&>(*pStart));
        return true;
    }
    if (pStart->typeID() == domEffect::ID())
    {
        rTranslation.m_strStartName = GetMaterialName(*pStart);
        if (rTranslation.m_strStartName.empty())
        {
            Log(QD_COLLADA, LOG_ERROR, "No <material> instances <effect id=\"%s\">", GetIDText(*pStart));
            return false;
        }
        return true;
    }
    Log(QD_COLLADA, LOG_ERROR, "Start element wasn't a <node> or <effect>");
    return false;
}

bool CColladaTargetPathTranslator::TranslatePathAtom(CTranslation& rTranslation, int32_t nIndex)
{
    const CColladaTargetPath& rPath = rTranslation.m_rPath;
    if (rPath.GetAtom(nIndex).GetElement() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Target path had NULL element at %d", nIndex);
        return false;
    }
    const int32_t nNumChildren = rPath.GetNumAtoms() - 1;
    if (nNumChildren > 3)
    {
        Log(QD_COLLADA, LOG_ERROR, "Invalid number of child elements (%d) at index %d of target path.",
            nNumChildren, nIndex);
        return false;
    }
    if (nIndex < nNumChildren)
    {
        return true; // on the way
    }
    switch (nNumChildren)
    {
    case 1:
        return TranslateNodeChild(rTranslation, nIndex);
    case 2:
        return TranslateEffectColor(rTranslation, nIndex);
    default:
        return TranslateNodeExtra(rTranslation, nIndex);
    }
}

bool CColladaTargetPathTranslator::TranslateNodeChild(CTranslation& rTranslation, int32_t nIndex)
{
    struct CTransform
    {
        daeInt nTypeID;
        EKind eKind;
    };
    static const CTransform s_arrTransforms[] = {
        {domTranslate::ID(), EKind::Translate}, {domRotate::ID(), EKind::Rotate},
        {domScale::ID(), EKind::Scale},         {domMatrix::ID(), EKind::Matrix},
        {domLookat::ID(), EKind::LookAt},
    };
    daeElement& rStart = *rTranslation.m_rPath.GetAtom(0).GetElement();
    daeElement& rElement = *rTranslation.m_rPath.GetAtom(nIndex).GetElement();
    const auto* pTransform = std::ranges::find(s_arrTransforms, rElement.typeID(), &CTransform::nTypeID);
    const bool bTransform = pTransform != std::end(s_arrTransforms);
    const bool bVisibility = IsNamed(rElement, "visibility");
    if (rStart.typeID() == domNode::ID() && !bTransform && !bVisibility)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Didn't recognize single child element of a node at index %d of target path.", nIndex);
        return false;
    }
    // The sid may be that of an element in a node further down.
    if (rStart.typeID() != domNode::ID() ||
        !(bTransform ? rElement.getParentElement() == &rStart : IsVisibilityOf(rElement, rStart)))
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Invalid parent element for single child element at index %d of target path.", nIndex);
        return false;
    }
    rTranslation.m_eKind = bTransform ? pTransform->eKind : EKind::Visibility;
    return true;
}

bool CColladaTargetPathTranslator::TranslateEffectColor(CTranslation& rTranslation, int32_t nIndex)
{
    struct CColorName
    {
        std::string_view strName;
        CSGMaterial::EParam eParam;
    };
    static constexpr CColorName COLORS[] = {
        {"emission", CSGMaterial::PARAM_EMISSION},       {"ambient", CSGMaterial::PARAM_AMBIENT},
        {"diffuse", CSGMaterial::PARAM_DIFFUSE},         {"specular", CSGMaterial::PARAM_SPECULAR},
        {"transparent", CSGMaterial::PARAM_TRANSPARENT},
    };
    if (rTranslation.m_rPath.GetAtom(0).GetElement()->typeID() != domEffect::ID())
    {
        Log(QD_COLLADA, LOG_ERROR, "Invalid parent for 2 child elements at index %d of target path.", nIndex);
        return false;
    }
    daeElement& rElement = *rTranslation.m_rPath.GetAtom(nIndex).GetElement();
    if (rElement.typeID() != domCommon_color_or_texture_type_complexType::domColor::ID())
    {
        Log(QD_COLLADA, LOG_ERROR, "Didn't recognize child elements of an effect at index %d of target path.",
            nIndex);
        return false;
    }
    daeElement* pChannel = rElement.getParentElement();
    if (pChannel == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Had NULL channel element for referencing an effect color at index %d of target path.", nIndex);
        return false;
    }
    const auto* pColor =
        std::ranges::find(COLORS, std::string_view(Text(pChannel->getElementName())), &CColorName::strName);
    if (pColor == std::end(COLORS))
    {
        Log(QD_COLLADA, LOG_ERROR, "Unrecognized color '%s' for color effect at index %d of target path.",
            pChannel->getElementName(), nIndex);
        return false;
    }
    rTranslation.m_eKind = EKind::Color;
    rTranslation.m_eParam = pColor->eParam;
    return true;
}

bool CColladaTargetPathTranslator::TranslateNodeExtra(CTranslation& rTranslation, int32_t nIndex)
{
    if (rTranslation.m_rPath.GetAtom(0).GetElement()->typeID() != domNode::ID())
    {
        Log(QD_COLLADA, LOG_ERROR, "Invalid parent for 3 child elements at index %d of target path.", nIndex);
        return false;
    }
    if (!IsNamed(*rTranslation.m_rPath.GetAtom(nIndex).GetElement(), "visibility"))
    {
        Log(QD_COLLADA, LOG_ERROR, "Didn't recognize %d child elements of a node at index %d of target path.",
            rTranslation.m_rPath.GetNumAtoms() - 1, nIndex);
        return false;
    }
    rTranslation.m_eKind = EKind::Visibility;
    return true;
}

bool CColladaTargetPathTranslator::TranslatePathTarget(const CTranslation& rTranslation,
                                                       CColladaAnimTarget& rTarget)
{
    static constexpr CMember MEMBERS[] = {
        {EKind::Translate, "", TARGET_ALL, 3},
        {EKind::Translate, "X", TARGET_X, 1},
        {EKind::Translate, "Y", TARGET_Y, 1},
        {EKind::Translate, "Z", TARGET_Z, 1},
        {EKind::Rotate, "ANGLE", TARGET_ANGLE, 1, EColladaValues::Degrees},
        {EKind::Scale, "", TARGET_ALL, 3},
        {EKind::Scale, "X", TARGET_X, 1},
        {EKind::Scale, "Y", TARGET_Y, 1},
        {EKind::Scale, "Z", TARGET_Z, 1},
        {EKind::Matrix, "", TARGET_ALL, 16, EColladaValues::Matrix},
        {EKind::Visibility, "", TARGET_ALL, 1},
        {EKind::Color, "", TARGET_ALL, 4},
        {EKind::Color, "R", TARGET_R, 1},
        {EKind::Color, "G", TARGET_G, 1},
        {EKind::Color, "B", TARGET_B, 1},
        {EKind::Color, "A", TARGET_A, 1},
    };
    const CColladaTargetPath& rPath = rTranslation.m_rPath;
    const CQDString& rStrMember = rPath.GetMember();
    const auto* pMember = std::ranges::find_if(MEMBERS, [&](const CMember& rMember) {
        return rMember.eKind == rTranslation.m_eKind && rMember.strMember == rStrMember;
    });
    if (pMember == std::end(MEMBERS))
    {
        const CColladaTargetPathAtom& rLast = rPath.GetAtom(rPath.GetNumAtoms() - 1);
        if (rStrMember.empty())
        {
            Log(QD_COLLADA, LOG_ERROR,
                "Path had no target and didn't know how to handle this with last element %s (%s)",
                rLast.GetElement()->getElementName(), rLast.GetName());
        }
        else
        {
            Log(QD_COLLADA, LOG_ERROR, "Didn't recognize last element and target of target path.");
        }
        return false;
    }
    rTarget = {CreateRef(rTranslation, pMember->eTarget), pMember->nOutputCount, pMember->eValues};
    return rTarget.m_spRef != nullptr;
}

CSGRefPathPtr CColladaTargetPathTranslator::CreateRef(const CTranslation& rTranslation, ETarget eTarget)
{
    const CQDCompactString& rStrName = rTranslation.m_strStartName;
    if (rTranslation.m_eKind == EKind::Visibility)
    {
        return CSGRefPath::ForVisibility(rStrName);
    }
    if (rTranslation.m_eKind == EKind::Color)
    {
        return CSGRefPath::ForMaterialParam(rStrName, rTranslation.m_eParam, eTarget);
    }
    const CSGRefPathPtr spRefTransform =
        CSGRefPath::ForTransform(rStrName, rTranslation.m_rPath.GetAtom(1).GetName(), eTarget);
    QD_ASSERT(spRefTransform, nullptr);
    return spRefTransform;
}

void CColladaTargetPathTranslator::NameMaterials()
{
    std::vector<daeElement*> vecInstances;
    m_rRoot.getDAE()->getDatabase()->typeLookup(domInstance_material::ID(), vecInstances, nullptr);
    std::unordered_set<const daeElement*> setBound;
    for (const daeElement* pInstance : vecInstances)
    {
        const daeURI& rTarget = static_cast<const domInstance_material*>(pInstance)->getTarget();
        setBound.insert(CSGLoaderCollada::FindURIElement(rTarget, domMaterial::ID()));
    }
    // What is drawn with the effect comes before materials that nothing is drawn with.
    for (const bool bBound : {true, false})
    {
        for (const auto& rspLibrary : AsSpan(m_rRoot.getLibrary_materials_array()))
        {
            for (const auto& rspMaterial : AsSpan(rspLibrary->getMaterial_array()))
            {
                const domInstance_effect* pInstance = rspMaterial->getInstance_effect();
                if (pInstance != nullptr && setBound.contains(rspMaterial.cast()) == bBound)
                {
                    m_mapMaterialNames.try_emplace(
                        CSGLoaderCollada::FindURIElement(pInstance->getUrl(), domEffect::ID()),
                        CColladaMaterials::GetGlobalName(*rspMaterial));
                }
            }
        }
    }
}

CQDCompactString CColladaTargetPathTranslator::GetMaterialName(const daeElement& rEffect)
{
    if (!m_bMaterialsNamed)
    {
        m_bMaterialsNamed = true;
        NameMaterials();
    }
    const auto it = m_mapMaterialNames.find(&rEffect);
    return it != m_mapMaterialNames.end() ? it->second : CQDCompactString();
}
