#include "qdscenegraph/texture/CSGTextureLoader.h"

#include "qdscenegraph/texture/CSGTexLdr_SOIL.h"
#include "qdscenegraph/texture/CSGTex_2D.h"

#include <new>

namespace
{

CSGTexturePtr ReportFailure(const CSGTexturePtr& spTexture, const CQDString& rName, const CQDString& rReason)
{
    if (!spTexture)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to load texture \"%s\": %s", rName, rReason);
    }
    return spTexture;
}

} // namespace

boost::intrusive_ptr<CSGTextureLoader> CSGTextureLoader::CreateStandardLoader()
{
    return new (std::nothrow) CSGTexLdr_SOIL;
}

CSGTexturePtr CSGTextureLoader::LoadTexture(const CQDString& rFilename)
{
    const CSGTexturePtr spTexture = TryLoadTexture(rFilename);
    return spTexture ? spTexture : CSGTex_2D::GetTextureFailedToLoad();
}

CSGTexturePtr CSGTextureLoader::TryLoadTexture(const CQDString& rFilename)
{
    CQDString strReason;
    const CSGTexturePtr spTexture = ReadTexture(rFilename, strReason);
    return ReportFailure(spTexture, rFilename, strReason);
}

CSGTexturePtr CSGTextureLoader::TryLoadTextureFromMemory(std::span<const uint8_t> arrFile,
                                                         const CQDString& rName)
{
    CQDString strReason;
    const CSGTexturePtr spTexture = ReadTextureFromMemory(arrFile, rName, strReason);
    return ReportFailure(spTexture, rName, strReason);
}
