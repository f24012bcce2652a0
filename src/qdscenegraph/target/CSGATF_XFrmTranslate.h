// Animate a translation.
#pragma once

#include "qdscenegraph/target/CSGATF_XFrmVector.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"

using CSGATF_XFrmTranslate = CSGATF_XFrmVector<CSGXFrm_Translate, &CSGXFrm_Translate::SetTranslation>;

template <float CSGFloat3::*COMPONENT>
using CSGATF_XFrmTranslate_Component =
    CSGATF_XFrmComponent<CSGXFrm_Translate, &CSGXFrm_Translate::GetTranslation,
                         &CSGXFrm_Translate::SetTranslation, COMPONENT>;
using CSGATF_XFrmTranslate_X = CSGATF_XFrmTranslate_Component<&CSGFloat3::x>;
using CSGATF_XFrmTranslate_Y = CSGATF_XFrmTranslate_Component<&CSGFloat3::y>;
using CSGATF_XFrmTranslate_Z = CSGATF_XFrmTranslate_Component<&CSGFloat3::z>;
