#include "qdscenegraph/texture/CSGTextureLoader.h"

#include <new>

boost::intrusive_ptr<CSGTextureLoader> CSGTextureLoader::CreateStandardLoader()
{
    return new (std::nothrow) CSGTextureLoader;
}
