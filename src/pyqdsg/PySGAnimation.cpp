#include "pyqdsg/PySGAnimation.h"

#include "pyqdsg/PySupport.h"
#include "qdscenegraph/animation/CSGAnimation.h"

namespace
{

struct PySGAnimation
{
    PyObject_HEAD boost::intrusive_ptr<CSGAnimation> m_spAnimation;
};

PyObject* PySGAnimation_repr(PyObject*) { return PyText_FromString("<qdsg.SGAnimation>"); }

PyObject* GetName(PyObject* pySelf, void*)
{
    const CSGAnimation* pAnimation =
        PyWrapper_get(pySelf, &PySGAnimation::m_spAnimation, "Had NULL animation");
    return pAnimation != nullptr ? PyText_FromString(pAnimation->GetName().GetView()) : nullptr;
}

PyGetSetDef s_arrGetSets[] = {PyCompat_GetSet("name", GetName, "Name of the animation."), {}};

} // namespace

PyTypeObject PySGAnimation_Type =
    PyCompat_MakeType({.szName = "qdsg.SGAnimation",
                       .nSize = sizeof(PySGAnimation),
                       .fnDealloc = PyWrapper_dealloc<&PySGAnimation::m_spAnimation>,
                       .szDoc = "qdsg SGAnimation objects",
                       .fnRepr = PySGAnimation_repr,
                       .arrGetSets = s_arrGetSets});

PyObject* PySGAnimation_create(CSGAnimation* pAnimation)
{
    if (pAnimation == nullptr)
    {
        return PyLogAndRaise(PyExc_ValueError, "Had NULL animation");
    }
    return PyWrapper_create(PySGAnimation_Type, &PySGAnimation::m_spAnimation, pAnimation,
                            "Failed to create a new PySGAnimation.");
}
