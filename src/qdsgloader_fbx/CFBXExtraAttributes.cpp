#include "qdsgloader_fbx/CFBXExtraAttributes.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/node/CSGData_RenderState.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace
{

enum class EAttribute
{
    DOUBLE_SIDED,
    ALPHA_BLEND,
    MIP_MAP_BIAS,
    DEPTH_BIAS,
    DO_NOT_CULL
};

struct CAttributeName
{
    std::string_view m_strName;
    EAttribute m_eAttribute;
};

constexpr std::array ATTRIBUTE_NAMES{
    CAttributeName{"vantor_doublesided", EAttribute::DOUBLE_SIDED},
    CAttributeName{"vantor_alphablend", EAttribute::ALPHA_BLEND},
    CAttributeName{"vantor_mipmapbias", EAttribute::MIP_MAP_BIAS},
    CAttributeName{"vantor_depthbias", EAttribute::DEPTH_BIAS},
    CAttributeName{"vantor_donotcull", EAttribute::DO_NOT_CULL},
};

} // namespace

void CFBXExtraAttributes::CheckFBXObjectForExtraAttributes(const FbxNode& rNode)
{
    // Content tools write such a property as a text, a truth value or a number.
    const auto GetBool = [](const FbxProperty& rProperty) {
        const std::string_view strValue = rProperty.GetString();
        const bool bValue =
            rProperty.IsString() ? strValue == "true" || strValue == "1" : rProperty.GetBool();
        Log(QD_FBX, LOG_INFO, "Found %s = '%s'", CQDString(rProperty.GetName()), bValue ? "true" : "false");
        return bValue;
    };
    const auto GetFloat = [](const FbxProperty& rProperty) {
        const auto fValue = static_cast<float>(rProperty.GetDouble());
        Log(QD_FBX, LOG_INFO, "Found %s = %g", CQDString(rProperty.GetName()), fValue);
        return fValue;
    };
    for (const FbxProperty& rProperty : rNode.GetProperties())
    {
        if (!rProperty.IsUserDefined())
        {
            continue;
        }
        const auto itName =
            std::ranges::find(ATTRIBUTE_NAMES, rProperty.GetName(), &CAttributeName::m_strName);
        if (itName == ATTRIBUTE_NAMES.end())
        {
            Log(QD_FBX, LOG_INFO, "Ignoring unrecognized user property '%s'", CQDString(rProperty.GetName()));
            continue;
        }
        switch (itName->m_eAttribute)
        {
        case EAttribute::DOUBLE_SIDED:
            m_bDoubleSided = GetBool(rProperty);
            break;
        case EAttribute::ALPHA_BLEND:
            m_bAlphaBlend = GetFloat(rProperty) != 0.0f;
            break;
        case EAttribute::MIP_MAP_BIAS:
            m_fMipMapBias = GetFloat(rProperty);
            break;
        case EAttribute::DEPTH_BIAS:
            m_fDepthBias = GetFloat(rProperty);
            break;
        case EAttribute::DO_NOT_CULL:
            m_bDoNotCull = GetBool(rProperty);
            break;
        }
    }
}

bool CFBXExtraAttributes::ApplyToRenderState(CSGNode& rNode) const
{
    if (!m_bDoubleSided && !m_fDepthBias && !m_bDoNotCull)
    {
        return true;
    }
    const boost::intrusive_ptr<CSGData_RenderState> spRenderState =
        CSGData_RenderState::GetOrCreateFromNode(&rNode);
    QD_CHECK_CREATED(spRenderState, false);
    if (m_bDoubleSided)
    {
        spRenderState->SetFlag(CSGData_RenderState::FLAG_DOUBLE_SIDED, *m_bDoubleSided);
    }
    if (m_bDoNotCull)
    {
        spRenderState->SetFlag(CSGData_RenderState::FLAG_DO_NOT_CULL, *m_bDoNotCull);
    }
    if (m_fDepthBias)
    {
        spRenderState->SetDepthBias(*m_fDepthBias);
    }
    return true;
}
