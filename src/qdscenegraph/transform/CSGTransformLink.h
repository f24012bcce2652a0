// A place for a transform in something that is computed from it.
#pragma once

#include "qdscenegraph/transform/CSGTransform.h"

// Holds the transform, and tells the dependent of its changes. Starts empty.
class CSGTransformLink
{
  public:
    // The dependent owns the link.
    explicit CSGTransformLink(CSGDirtyGraphNode* pDependent) : m_objLink(pDependent) {}

    CSGTransform* Get() const { return m_spTransform.get(); }
    // The dependent is told of the new transform; null empties the place.
    void Set(CSGTransform* pTransform);
    // Empties the place and tells nobody.
    void Drop();
    // Takes a transform that is loaded. False (reported) for another kind of object, and when the place is
    // taken.
    bool SetLoaded(CSGStreamable* pObject);

  private:
    CSGTransform::CTransformPtr m_spTransform;
    CSGDirtyGraphLink m_objLink; // goes before the transform
};
