#include "qdscenegraph/animation/CSGAnimTargetBinding.h"

#include "qdscenegraph/animation/CSGAnimLayer.h"
#include "qdscenegraph/target/CSGATF_XFrmRotate_Quat.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace
{

void Blend(std::span<float> arrBelow, std::span<const float> arrAbove, float fWeight)
{
    for (size_t n = 0; n < arrBelow.size(); ++n)
    {
        arrBelow[n] += (arrAbove[n] - arrBelow[n]) * fWeight;
    }
}

// A quaternion and its negative are the same rotation: the nearer of the two is blended in.
void BlendQuaternion(std::span<float> arrBelow, std::span<float> arrAbove, float fWeight)
{
    if (std::inner_product(arrBelow.begin(), arrBelow.end(), arrAbove.begin(), 0.0f) < 0.0f)
    {
        std::ranges::transform(arrAbove, arrAbove.begin(), std::negate());
    }
    Blend(arrBelow, arrAbove, fWeight);
    const float fLength =
        std::sqrt(std::inner_product(arrBelow.begin(), arrBelow.end(), arrBelow.begin(), 0.0f));
    if (fLength > 0.0f)
    {
        std::ranges::transform(arrBelow, arrBelow.begin(), [=](float f) { return f / fLength; });
    }
}

} // namespace

bool CSGAnimTargetBinding::Init(CSGAnimLayer* pAnimLayer, CSGAnimChannel* pChannel, CSGATF* pTarget)
{
    QD_CHECK(m_pAnimLayer == 0, false);
    QD_CHECK(m_spChannel == 0, false);
    QD_CHECK(m_spTarget == 0, false);
    QD_CHECK_ARG(pAnimLayer, false);
    QD_CHECK_ARG(pChannel, false);
    QD_CHECK_ARG(pTarget, false);
    QD_CHECK_NOT_NULL(pChannel->GetSampler(), false);
    m_pAnimLayer = pAnimLayer;
    m_spChannel = pChannel;
    m_spTarget = pTarget;
    // Four floats may be a colour as well.
    m_bQuaternion = dynamic_cast<const CSGATF_XFrmRotate_Quat*>(pTarget) != nullptr;
    return true;
}

bool CSGAnimTargetBinding::MaskBinding(CSGAnimTargetBinding* pMasking)
{
    QD_CHECK_ARG(pMasking, false);
    QD_CHECK(m_pMasking == 0, false);
    QD_CHECK(pMasking->m_pMaskedBy == 0, false);
    m_pMasking = pMasking;
    pMasking->m_pMaskedBy = this;
    return true;
}

bool CSGAnimTargetBinding::UpdateTarget()
{
    QD_CHECK(m_pMaskedBy == 0, false);
    CSGATF* pTarget = m_spTarget.get();
    QD_CHECK_NOT_NULL(pTarget, false);
    const int32_t nOutputs = pTarget->GetOutputCount();
    if (!CSGAnimChannel::IsSupportedOutputCount(nOutputs))
    {
        return false;
    }
    float arrStorage[CSGAnimChannel::MAX_OUTPUTS];
    const std::span objValue(arrStorage, static_cast<size_t>(nOutputs));
    bool bHasValue = false;
    QD_CHECK_OR_RETURN(ComputeValue(objValue, bHasValue), "Call %s failed",
                       "ComputeValue<ValueType>(objValue)", false);
    if (bHasValue)
    {
        QD_CHECK_CALL(pTarget->SetTargetValue(objValue), false);
    }
    return true;
}

float CSGAnimTargetBinding::GetWeight() const
{
    const bool bReplaced = m_pMaskedBy != nullptr && m_pMaskedBy->m_pAnimLayer == m_pAnimLayer;
    return bReplaced ? 0.0f : m_pAnimLayer->GetWeight();
}

bool CSGAnimTargetBinding::SampleValue(std::span<float> arrValue) const
{
    return m_spChannel->GetSampler()->SampleAtTime(m_pAnimLayer->GetAnimationTime(), arrValue.data(),
                                                   static_cast<int32_t>(arrValue.size()));
}

bool CSGAnimTargetBinding::ComputeValue(std::span<float> arrValue, bool& rbHasValue) const
{
    // Nothing shows through a layer of full weight.
    const CSGAnimTargetBinding* pBinding = this;
    while (pBinding->m_pMasking != nullptr && pBinding->GetWeight() < 1.0f)
    {
        pBinding = pBinding->m_pMasking;
    }
    float arrStorage[CSGAnimChannel::MAX_OUTPUTS];
    const std::span arrAbove(arrStorage, arrValue.size());
    for (; pBinding != nullptr; pBinding = pBinding->m_pMaskedBy)
    {
        const float fWeight = pBinding->GetWeight();
        if (fWeight <= 0.0f)
        {
            continue;
        }
        QD_CHECK_CALL(pBinding->SampleValue(rbHasValue ? arrAbove : arrValue), false);
        if (rbHasValue)
        {
            m_bQuaternion ? BlendQuaternion(arrValue, arrAbove, fWeight) : Blend(arrValue, arrAbove, fWeight);
        }
        rbHasValue = true;
    }
    return true;
}
