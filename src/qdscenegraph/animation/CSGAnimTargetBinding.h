// One channel of a layer, bound to what it writes in one tree.
#pragma once

#include "qdscenegraph/animation/CSGAnimChannel.h"

class CSGAnimLayer;

// Bindings that write the same target stand in a chain: each masks the one of the layer below it, and the top
// one, which nothing masks, writes the value of all. That value is the lowest layer's, over which each layer
// above is blended by its weight: below * (1 - weight) + value * weight; quaternions on the shorter arc and
// brought back to length 1, matrices float by float. A layer of weight 0 is passed over; the lowest one that
// is left counts whole, as there is nothing below it.
class CSGAnimTargetBinding final
{
  public:
    CSGAnimTargetBinding() = default;
    CSGAnimTargetBinding(const CSGAnimTargetBinding&) = delete;
    CSGAnimTargetBinding& operator=(const CSGAnimTargetBinding&) = delete;

    // Once. The layer is borrowed: it must outlive the binding.
    bool Init(CSGAnimLayer* pAnimLayer, CSGAnimChannel* pChannel, CSGATF* pTarget);
    // Puts this binding on top of another, which lies under none and is borrowed, once. In a layer that
    // writes a target twice, the upper binding takes the place of the other.
    bool MaskBinding(CSGAnimTargetBinding* pMasking);
    bool IsMasked() const { return m_pMaskedBy != nullptr; }

    // Writes the value of the chain at the times at which its layers stand; without a layer that has weight
    // the target stays as it is. False (reported) for a masked binding, and when there is no value.
    bool UpdateTarget();

  private:
    // One channel's value at its layer's time.
    bool SampleValue(std::span<float> arrValue) const;
    // The value of the chain below this binding, which is its top. rbHasValue is false when no layer has
    // weight.
    bool ComputeValue(std::span<float> arrValue, bool& rbHasValue) const;
    // Its layer's weight, 0 for a binding whose place another one of the layer has taken.
    float GetWeight() const;

    CSGAnimLayer* m_pAnimLayer = nullptr;
    CSGAnimChannelPtr m_spChannel;
    CSGATFPtr m_spTarget;
    bool m_bQuaternion = false;
    CSGAnimTargetBinding* m_pMasking = nullptr;  // the one below
    CSGAnimTargetBinding* m_pMaskedBy = nullptr; // the one above
};
