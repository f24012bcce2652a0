#include "qdsgloader_fbx/CSGLoaderFBX.h"

#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

#include <new>

boost::intrusive_ptr<CSGLoader> CSGLoaderFBX::Create(const boost::intrusive_ptr<CSGTextureLoader>&, bool,
                                                     bool)
{
    // Flags and textures matter to what is converted, which is nothing yet.
    return new (std::nothrow) CSGLoaderFBXImpl;
}
