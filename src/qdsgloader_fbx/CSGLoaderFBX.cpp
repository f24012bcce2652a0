#include "qdsgloader_fbx/CSGLoaderFBX.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePool.h"
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

#include <new>

boost::intrusive_ptr<CSGLoaderFBX> CSGLoaderFBX::Create(
    const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader, bool bKeepQuaternions, bool bResample)
{
    QD_CHECK_ARG(spTextureLoader, nullptr);
    return new (std::nothrow) CSGLoaderFBXImpl(spTextureLoader, bKeepQuaternions, bResample);
}

CSGLoaderFBX::CSGLoaderFBX() = default;

CSGLoaderFBX::~CSGLoaderFBX() = default;

void CSGLoaderFBX::SetTexturePool(const boost::intrusive_ptr<CSGTexturePool>& spTexturePool)
{
    m_spTexturePool = spTexturePool;
}
