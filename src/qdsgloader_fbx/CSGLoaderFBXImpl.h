// What stands behind CSGLoaderFBX.
#pragma once

#include "qdsgloader_fbx/CSGLoaderFBX.h"

// Knows its files by their names; reading them is not supported yet, so a document is never held.
class CSGLoaderFBXImpl final : public CSGLoaderFBX
{
  public:
    bool CanLoadFile(const CQDString& rStrFilename) const override;
    bool LoadFile(const CQDString& rStrFilename) override;
    boost::intrusive_ptr<CSGNode> LoadSceneGraph() override;
    EUpAxis LoadUpAxis() override;
    bool LoadAnimations(std::vector<CSGAnimation*>& rvecAnimations) override;
    boost::intrusive_ptr<CSGAnimation> LoadDefaultAnimation() override;
};
