#include "qdsgloader_collada/CColladaNodeExtra.h"

#include "daedom/CDaeNumber.h"
#include "qdcommon/CInt.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/node/CSGData_RenderState.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <algorithm>

namespace
{

// The text of a flag as an integer. False (reported) when it is no number at all.
bool GetFlag(daeElement& rElement, int& rnValue)
{
    const CQDString strText(TrimDaeSpace(rElement.getCharData()));
    if (CInt::FromString(strText, rnValue))
    {
        return true;
    }
    Log(QD_COLLADA, LOG_ERROR, "%s is not an integer.  Parsing as float and casting to integer.", strText);
    double fValue = 0;
    if (!ParseDaeReal(strText, fValue) || fValue != fValue)
    {
        Log(QD_COLLADA, LOG_WARNING, "Ignoring <%s> element with the value \"%s\"", rElement.getElementName(),
            strText);
        return false;
    }
    rnValue = static_cast<int>(std::clamp(fValue, -1.0, 1.0));
    return true;
}

bool ApplyFlag(daeElement& rElement, CSGNode& rSGNode)
{
    const std::string_view strName = Text(rElement.getElementName());
    const bool bVisibility = strName == "visibility";
    int nValue = 0;
    if ((!bVisibility && strName != "double_sided") || !GetFlag(rElement, nValue))
    {
        return true;
    }
    if (bVisibility)
    {
        QD_CHECK_CALL(rSGNode.SetVisible(nValue != 0), false);
        return true;
    }
    if (nValue == 0 && rSGNode.FindData<CSGData_RenderState>() == nullptr)
    {
        return true; // as it is
    }
    const auto spRenderState = CSGData_RenderState::GetOrCreateFromNode(&rSGNode);
    QD_CHECK_NOT_NULL(spRenderState, false);
    spRenderState->SetFlag(CSGData_RenderState::FLAG_DOUBLE_SIDED, nValue != 0);
    return true;
}

} // namespace

bool CColladaNodeExtra::Load(domNode& rNode, CSGNode& rSGNode)
{
    for (const auto& rspExtra : AsSpan(rNode.getExtra_array()))
    {
        for (const auto& rspTechnique : AsSpan(rspExtra->getTechnique_array()))
        {
            for (const daeElementRef& rspElement : AsSpan(rspTechnique->getContents()))
            {
                if (!ApplyFlag(*rspElement, rSGNode))
                {
                    return false;
                }
            }
        }
    }
    return true;
}
