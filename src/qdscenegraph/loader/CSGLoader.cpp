#include "qdscenegraph/loader/CSGLoader.h"

boost::intrusive_ptr<CSGResourceSet> CSGLoader::LoadResourceSet()
{
    const EUpAxis eUpAxis = LoadUpAxis();
    boost::intrusive_ptr<CSGResourceSet> spResourceSet = CSGResourceSet::Create();
    QD_ASSERT(spResourceSet, nullptr);
    spResourceSet->SetUpAxis(eUpAxis);
    const boost::intrusive_ptr<CSGNode> spSceneGraph = LoadSceneGraph();
    QD_ASSERT(spSceneGraph, nullptr);
    QD_ASSERT(spResourceSet->AddTopLevelNode(spSceneGraph.get()), nullptr);
    if (const boost::intrusive_ptr<CSGAnimation> spDefaultAnimation = LoadDefaultAnimation())
    {
        QD_ASSERT(spResourceSet->AddTopLevelNode(spDefaultAnimation.get()), nullptr);
    }
    std::vector<CSGAnimation*> vecAnimations;
    QD_ASSERT(LoadAnimations(vecAnimations), nullptr);
    for (CSGAnimation* pAnimation : vecAnimations)
    {
        QD_ASSERT(pAnimation, nullptr);
        QD_ASSERT(spResourceSet->AddTopLevelNode(pAnimation), nullptr);
    }
    return spResourceSet;
}
