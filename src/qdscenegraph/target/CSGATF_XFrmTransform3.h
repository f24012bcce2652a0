// Animates a transform that is given by its matrix.
#pragma once

#include "qdscenegraph/target/CSGATF.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"

// A value is a matrix in the order of COLLADA: with the row vectors of CTransform3, singles 0, 4, 8 are what
// becomes of X, 1, 5, 9 of Y and 2, 6, 10 of Z. The translation is 12, 13, 14; the other four are not looked
// at.
class CSGATF_XFrmTransform3 final : public CSGATFInterface<CSGATF_XFrmTransform3, 16>
{
  public:
    explicit CSGATF_XFrmTransform3(CSGXFrm_Transform3* pObjTransform) : m_spObjTransform(pObjTransform) {}
    static boost::intrusive_ptr<CSGATF_XFrmTransform3> Create(CSGXFrm_Transform3* pObjTransform)
    {
        return CSGMem::Construct<CSGATF_XFrmTransform3>(pObjTransform);
    }

    bool SetValue(std::span<const float, 16> arrValue);

  private:
    boost::intrusive_ptr<CSGXFrm_Transform3> m_spObjTransform;
};
