#include "qdscenegraph/reference/CSGTransformWalk.h"

#include "qdscenegraph/transform/CSGTransformProduct.h"

#include <utility>

CSGTransform* CSGTransformWalk::Next()
{
    if (m_pRoot != nullptr)
    {
        return Enter(std::exchange(m_pRoot, nullptr));
    }
    while (!m_vecFrames.empty())
    {
        CFrame& rFrame = m_vecFrames.back();
        if (rFrame.nNext == rFrame.pProduct->GetNumTransforms())
        {
            m_vecFrames.pop_back();
        }
        else if (CSGTransform* pTransform = rFrame.pProduct->GetTransformObject(rFrame.nNext++))
        {
            return Enter(pTransform);
        }
    }
    return nullptr;
}

CSGTransform* CSGTransformWalk::Enter(CSGTransform* pTransform)
{
    const auto* pProduct = dynamic_cast<const CSGTransformProduct*>(pTransform);
    if (pProduct != nullptr && (!pProduct->IsShared() || m_setShared.insert(pProduct).second))
    {
        m_vecFrames.push_back({pProduct, 0});
    }
    return pTransform;
}
