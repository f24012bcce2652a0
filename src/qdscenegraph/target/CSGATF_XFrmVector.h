// What the targets for transforms of three floats, translations and scales, have in common.
#pragma once

#include "qdcommon/CSGFloat3.h"
#include "qdscenegraph/target/CSGATF.h"

// The three floats of a transform with the setter SET.
template <class TRANSFORM, auto SET>
class CSGATF_XFrmVector final : public CSGATFInterface<CSGATF_XFrmVector<TRANSFORM, SET>, 3>
{
  public:
    explicit CSGATF_XFrmVector(TRANSFORM* pObjTransform) : m_spObjTransform(pObjTransform) {}
    static boost::intrusive_ptr<CSGATF_XFrmVector> Create(TRANSFORM* pObjTransform)
    {
        return CSGMem::Construct<CSGATF_XFrmVector>(pObjTransform);
    }

    bool SetValue(std::span<const float, 3> arrValue)
    {
        QD_CHECK_NOT_NULL(m_spObjTransform, false);
        ((*m_spObjTransform).*SET)({arrValue[0], arrValue[1], arrValue[2]});
        return true;
    }

  private:
    boost::intrusive_ptr<TRANSFORM> m_spObjTransform;
};

// One of them; the other two are kept.
template <class TRANSFORM, auto GET, auto SET, float CSGFloat3::*COMPONENT>
class CSGATF_XFrmComponent final
    : public CSGATFInterface<CSGATF_XFrmComponent<TRANSFORM, GET, SET, COMPONENT>, 1>
{
  public:
    explicit CSGATF_XFrmComponent(TRANSFORM* pTransform) : m_spTransform(pTransform) {}
    static boost::intrusive_ptr<CSGATF_XFrmComponent> Create(TRANSFORM* pTransform)
    {
        return CSGMem::Construct<CSGATF_XFrmComponent>(pTransform);
    }

    bool SetValue(std::span<const float, 1> arrValue)
    {
        if (!m_spTransform)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Had NULL transform.");
            return false;
        }
        CSGFloat3 vValue = ((*m_spTransform).*GET)();
        vValue.*COMPONENT = arrValue[0];
        ((*m_spTransform).*SET)(vValue);
        return true;
    }

  private:
    boost::intrusive_ptr<TRANSFORM> m_spTransform;
};
