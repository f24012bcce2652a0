// The write end of an animation: takes a sampled value and stores it in one property of the scene graph.
#pragma once

#include "qdscenegraph/object/CSGMem.h"
#include "qdscenegraph/object/CSGTombstone.h"

#include <span>

// Keeps the object alive that it writes; one that is made without an object fails to write. Made at run time
// by resolving references; never saved.
class CSGATF : public CSGObject, public CEnableSGObjectWPtr
{
  public:
    // How many floats a value has.
    virtual int32_t GetOutputCount() const = 0;
    // Stores a value, without taking memory. False (reported) for another number of floats, and without an
    // object to write. A transform that has the value already hears nothing of it.
    virtual bool SetTargetValue(std::span<const float> arrValues) = 0;
};

using CSGATFPtr = boost::intrusive_ptr<CSGATF>;

// Base of a concrete kind T, which stores its value in `bool SetValue(std::span<const float, COUNT>)`.
template <class T, size_t COUNT>
class CSGATFInterface : public CSGATF
{
  public:
    int32_t GetOutputCount() const override { return static_cast<int32_t>(COUNT); }
    bool SetTargetValue(std::span<const float> arrValues) final
    {
        QD_CHECK(arrValues.size() == COUNT, false);
        return static_cast<T*>(this)->SetValue(arrValues.template first<COUNT>());
    }
    size_t GetObjectSize() const override { return sizeof(T); }
};
