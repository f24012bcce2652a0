// Loads the images of a document as textures.
#pragma once

#include "qdscenegraph/loader/CSGSceneTextures.h"
#include "qdscenegraph/material/CSGSurface.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <filesystem>
#include <unordered_map>

// Each image, and each file, is loaded once, when it is first asked for: all that show it share it.
class CColladaImages
{
  public:
    // The pool may be null. The document's file tells the folder that images are searched in.
    CColladaImages(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
                   const boost::intrusive_ptr<CSGTexturePool>& spTexturePool, const CQDString& rStrDocument);
    ~CColladaImages();

    // Null (reported) when no texture can be made of the image. A file that is missing or does not decode is
    // reported, too, and gives the texture that stands for such.
    CSGSurfacePtr GetSurface(ColladaDOM141::domImage& rImage);

  private:
    CSGTexturePtr LoadImage(const ColladaDOM141::domImage& rImage);
    CSGTexturePtr LoadData(const ColladaDOM141::domImage& rImage) const;
    CSGTexturePtr LoadReference(const ColladaDOM141::domImage& rImage);

    CSGSceneTextures m_objTextures;
    std::filesystem::path m_objFolder;
    std::unordered_map<const ColladaDOM141::domImage*, CSGSurfacePtr> m_mapSurfaces;
};
