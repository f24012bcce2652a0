// Loads the images of an FBX file as textures.
#pragma once

#include "qdscenegraph/loader/CSGSceneTextures.h"
#include "qdscenegraph/material/CSGSampler.h"

#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <unordered_map>

class FbxFileTexture;
class FbxVideo;

// Each image is loaded once, when it is first asked for, and all that show it share it.
class CFBXImages
{
  public:
    // The pool may be null. The FBX file tells the folder that images are searched in.
    CFBXImages(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
               const boost::intrusive_ptr<CSGTexturePool>& spTexturePool, const CQDString& rStrFBXFilename);
    ~CFBXImages();

    // Whether the texture names a file, or brings one along.
    static bool HasImage(const FbxFileTexture& rTexture);
    // Textures of one image that wrap in the same way share their sampler. Null (reported) when none can be
    // made.
    CSGSamplerPtr GetOrCreateSampler(const FbxFileTexture& rTexture);

  private:
    struct CImage
    {
        const FbxFileTexture* pTexture = nullptr; // the first that showed the image
        CSGSurfacePtr spSurface;
    };
    using CSamplerKey = std::pair<const CSGSurface*, std::pair<int, int>>;

    // An image that is missing or does not decode is the texture that stands for such.
    CSGSurfacePtr GetOrLoadImage(const CQDString& rStrImageName, const FbxFileTexture& rTexture);
    CSGTexturePtr LoadImage(const CQDString& rStrImageName, const FbxFileTexture& rTexture);
    // The embedded image file that the texture shows; empty when there is none.
    std::span<const uint8_t> FindContent(const FbxFileTexture& rTexture);
    CQDString FindFile(const CQDString& rStrImageName, const FbxFileTexture& rTexture) const;

    CSGSceneTextures m_objTextures;
    std::filesystem::path m_objFolder;
    std::filesystem::path
        m_objMediaFolder; // where tools unpack what is embedded: "scene.fbm" for "scene.fbx"
    std::unordered_map<CQDString, CImage> m_mapImages; // by name
    std::map<CSamplerKey, CSGSamplerPtr> m_mapSamplers;
    std::unordered_map<const uint8_t*, CSGTexturePtr> m_mapEmbedded; // by content; null: does not decode
    std::optional<std::unordered_map<CQDString, const FbxVideo*>> m_mapContents; // of the scene, by file name
};
