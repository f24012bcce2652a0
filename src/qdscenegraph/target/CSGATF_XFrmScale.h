// Animate a scale.
#pragma once

#include "qdscenegraph/target/CSGATF_XFrmVector.h"
#include "qdscenegraph/transform/CSGXFrm_Scale.h"

using CSGATF_XFrmScale = CSGATF_XFrmVector<CSGXFrm_Scale, &CSGXFrm_Scale::SetScale>;

template <float CSGFloat3::*COMPONENT>
using CSGATF_XFrmScale_Component =
    CSGATF_XFrmComponent<CSGXFrm_Scale, &CSGXFrm_Scale::GetScale, &CSGXFrm_Scale::SetScale, COMPONENT>;
using CSGATF_XFrmScale_X = CSGATF_XFrmScale_Component<&CSGFloat3::x>;
using CSGATF_XFrmScale_Y = CSGATF_XFrmScale_Component<&CSGFloat3::y>;
using CSGATF_XFrmScale_Z = CSGATF_XFrmScale_Component<&CSGFloat3::z>;
