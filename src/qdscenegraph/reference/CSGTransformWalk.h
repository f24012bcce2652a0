// A walk over a transform and all that it is made of.
#pragma once

#include <boost/container/small_vector.hpp>
#include <cstdint>
#include <unordered_set>

class CSGTransform;
class CSGTransformProduct;

// In document order, each product before its factors. A product that stands in several places is gone into
// once. The transforms must not change meanwhile.
class CSGTransformWalk
{
  public:
    // From a transform or from null, which has nothing to walk over.
    explicit CSGTransformWalk(CSGTransform* pRoot) : m_pRoot(pRoot) {}

    // Null behind the last one.
    CSGTransform* Next();

  private:
    struct CFrame
    {
        const CSGTransformProduct* pProduct;
        int32_t nNext;
    };

    // Goes into a transform that is a product.
    CSGTransform* Enter(CSGTransform* pTransform);

    CSGTransform* m_pRoot; // null from the first step on
    boost::container::small_vector<CFrame, 8> m_vecFrames;
    std::unordered_set<const CSGTransformProduct*> m_setShared;
};
