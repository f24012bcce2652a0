// What turns a scene file into a scene graph and animations.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdcommon/CRefObject.h"
#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdscenegraph/resource/CSGResourceSet.h"

#include <vector>

// LoadFile reads a file and holds its document; every Load... operation after it works on that document and
// may be called more than once. Without a document each of them reports that and fails.
class CSGLoader : public CRefObject
{
  public:
    // Whether the name's extension is one that this loader reads (compared exactly).
    virtual bool CanLoadFile(const CQDString& rStrFilename) const = 0;
    virtual bool LoadFile(const CQDString& rStrFilename) = 0;
    // A new set of scene graph, default animation and animations; null on failure.
    virtual boost::intrusive_ptr<CSGResourceSet> LoadResourceSet();
    // The root of the converted scene; null on failure.
    virtual boost::intrusive_ptr<CSGNode> LoadSceneGraph() = 0;
    // The Z axis when the document does not say.
    virtual EUpAxis LoadUpAxis() = 0;
    // Appends the named animations, which the loader keeps alive.
    virtual bool LoadAnimations(std::vector<CSGAnimation*>& rvecAnimations) = 0;
    // The animation with all channels of the file; null when it has none.
    virtual boost::intrusive_ptr<CSGAnimation> LoadDefaultAnimation() = 0;
};
