#include "pyqdsg/PySGAnimation.h"

#include "pyqdsg/PySGNode.h"
#include "pyqdsg/PySupport.h"

#include <ranges>

namespace
{

PyObject* PySGAnimation_repr(PyObject*) { return PyText_FromString("<qdsg.SGAnimation>"); }

CSGAnimation* GetAnimation(PyObject* pySelf)
{
    return PyWrapper_get(pySelf, &PySGAnimation::m_spAnimation, "Had NULL animation");
}

PyObject* GetName(PyObject* pySelf, void*)
{
    const CSGAnimation* pAnimation = GetAnimation(pySelf);
    return pAnimation != nullptr ? PyText_FromString(pAnimation->GetName().GetView()) : nullptr;
}

template <float (CSGAnimation::*GET)() const>
PyObject* GetTime(PyObject* pySelf, void*)
{
    const CSGAnimation* pAnimation = GetAnimation(pySelf);
    return pAnimation != nullptr ? PyFloat_FromDouble((pAnimation->*GET)()) : nullptr;
}

PyObject* GetChannels(PyObject* pySelf, void*)
{
    const CSGAnimation* pAnimation = GetAnimation(pySelf);
    if (pAnimation == nullptr)
    {
        return nullptr;
    }
    const auto rngChannels = std::views::iota(0, pAnimation->GetNumChannels()) |
                             std::views::transform([&](int32_t n) { return pAnimation->GetChannel(n); });
    return PyList_of(
        rngChannels,
        [](const CSGAnimChannel* pChannel) { return PyText_FromString(pChannel->GetName().GetView()); },
        "Failed to create a new list for channels.");
}

// The text is that of the nodes' methods.
CSGAnimation* GetAnimationForMethod(PyObject* pySelf)
{
    return PyWrapper_get(pySelf, &PySGAnimation::m_spAnimation, "Had NULL internal SG node.",
                         PyExc_Exception);
}

PyObject* PySGAnimation_remove_channel(PyObject* pySelf, PyObject* pyArgs)
{
    CSGAnimation* pAnimation = GetAnimationForMethod(pySelf);
    if (pAnimation == nullptr)
    {
        return nullptr;
    }
    std::optional<CQDString> strName;
    if (!PyArg_ParseTuple(pyArgs, "O&:remove_channel", PyArg_ConvertText, &strName))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    pAnimation->RemoveChannel(*strName);
    Py_RETURN_NONE;
}

PyObject* PySGAnimation_slice(PyObject* pySelf, PyObject* pyArgs)
{
    const CSGAnimation* pAnimation = GetAnimationForMethod(pySelf);
    if (pAnimation == nullptr)
    {
        return nullptr;
    }
    float fBeginTime = 0.0f;
    float fEndTime = 0.0f;
    std::optional<CQDString> strName;
    if (!PyArg_ParseTuple(pyArgs, "ff|O&:slice", &fBeginTime, &fEndTime, PyArg_ConvertText, &strName))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    const CSGAnimation::CAnimationPtr pNewAnim = pAnimation->Slice(fBeginTime, fEndTime);
    QD_CHECK_NOT_NULL(pNewAnim, PyRaise(PyExc_ValueError, "Failed to slice animation."));
    if (strName)
    {
        pNewAnim->SetName(*strName);
    }
    return PySGAnimation_create(pNewAnim.get());
}

PyObject* PySGAnimation_pose(PyObject* pySelf, PyObject* pyArgs)
{
    const CSGAnimation* pAnimation = GetAnimationForMethod(pySelf);
    if (pAnimation == nullptr)
    {
        return nullptr;
    }
    PySGNode* pyNode = nullptr;
    float fTime = 0.0f;
    if (!PyArg_ParseTuple(pyArgs, "O!f:pose", &PySGNode_Type, &pyNode, &fTime))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    CSGNode* pNode = pyNode->m_spNode.get();
    if (pNode == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Had NULL SG node.");
    }
    if (!pAnimation->PoseModelAtTime(pNode, fTime))
    {
        return PyRaise(PyExc_ValueError, "Failed to pose every channel of animation '%s'.",
                       pAnimation->GetName());
    }
    Py_RETURN_NONE;
}

PyMethodDef s_arrMethods[] = {
    {"remove_channel", PySGAnimation_remove_channel, METH_VARARGS,
     "Remove any channel with the given name from this animation"},
    {"slice", PySGAnimation_slice, METH_VARARGS,
     "Creates a new PySGAnimation that's a subsection of this one"},
    {"pose", PySGAnimation_pose, METH_VARARGS, "Pose the scene graph below a node as it is at a time"},
    {}};

PyGetSetDef s_arrGetSets[] = {
    PyCompat_GetSet("name", GetName, "Name of the animation."),
    PyCompat_GetSet("begin_time", GetTime<&CSGAnimation::GetBeginTime>, "When the animation begins."),
    PyCompat_GetSet("end_time", GetTime<&CSGAnimation::GetEndTime>, "When the animation ends."),
    PyCompat_GetSet("channels", GetChannels, "The names of the animation's channels."),
    {}};

} // namespace

PyTypeObject PySGAnimation_Type =
    PyCompat_MakeType({.szName = "qdsg.SGAnimation",
                       .nSize = sizeof(PySGAnimation),
                       .fnDealloc = PyWrapper_dealloc<&PySGAnimation::m_spAnimation>,
                       .szDoc = "qdsg SGAnimation objects",
                       .fnRepr = PySGAnimation_repr,
                       .arrMethods = s_arrMethods,
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
