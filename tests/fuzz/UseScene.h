// What a user does with a scene that has loaded.
#pragma once

#include "../unit/support/CTempFile.h"
#include "qdscenegraph/geometry/CSGData_GeomBounds.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/resource/CSGResourceSet.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"

inline void UseScene(CSGResourceSet* pSet, const CTempFile& rSaved)
{
    pSet->AddTopLevelNode(pSet->GetNumTopLevelNodes() > 0 ? pSet->GetTopLevelNode(0)
                                                          : CSGNode::Create("", "").get());
    rSaved.Remove();
    CSGNestWriter::Create()->SaveResourceSet(rSaved.GetName(), pSet);
    if (const auto spScene = pSet->GetSceneGraph())
    {
        for (CSGNode* p = spScene.get(); p != nullptr; p = p->GetNextInTree(spScene.get()))
        {
            CSGData_WorldTransform::GetOrCreateFromNode(p)->GetTransform();
            if (CSGData_GeomBounds* pBounds = p->FindData<CSGData_GeomBounds>())
            {
                pBounds->GetSphere();
            }
        }
        spScene->OutputDebugInfo("");
        spScene->OutputGeomStats("");
    }
}
