// What a user does with a scene that has loaded.
#pragma once

#include "../unit/support/CTempFile.h"
#include "qdscenegraph/animation/CSGAnimPlayer.h"
#include "qdscenegraph/animation/CSGData_AnimStack.h"
#include "qdscenegraph/geometry/CSGData_GeomBounds.h"
#include "qdscenegraph/light/CSGData_LightSet.h"
#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/material/CSGLightState.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/resource/CSGResourceSet.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"

inline void UseScene(CSGResourceSet* pSet, const CTempFile& rSaved)
{
    pSet->AddTopLevelNode(pSet->GetNumTopLevelNodes() > 0 ? pSet->GetTopLevelNode(0)
                                                          : CSGNode::Create("", "").get());
    rSaved.Remove();
    CSGNestWriter::Create()->SaveResourceSet(rSaved.GetName(), pSet);
    for (int32_t n = 0; n < pSet->GetNumTopLevelNodes(); ++n)
    {
        if (auto* pTexture = dynamic_cast<CSGTex_2D*>(pSet->GetTopLevelNode(n)))
        {
            pTexture->GenerateMipMaps();
        }
    }
    if (const auto spScene = pSet->GetSceneGraph())
    {
        std::vector<CSGAnimation*> vecAnimations;
        pSet->GetAnimations(vecAnimations);
        for (const CSGAnimation* pAnimation : vecAnimations)
        {
            pAnimation->PoseModel(spScene.get());
            pAnimation->PoseModelAtTime(spScene.get(), 0.3f);
            pAnimation->OutputDebugInfo("");
        }
        for (CSGNode* p = spScene.get(); p != nullptr; p = p->GetNextInTree(spScene.get()))
        {
            CSGData_WorldTransform::GetOrCreateFromNode(p)->GetTransform();
            if (const auto* pMaterial = p->FindData<CSGData_Material>())
            {
                pMaterial->GetMaterial()->GetMaterialState();
            }
            if (const auto* pLights = p->FindData<CSGData_LightSet>())
            {
                std::vector<CSGLightState> vecStates;
                pLights->SetupLightStates(CTransform3(), vecStates);
            }
            if (p->FindData<CSGData_AnimStack>() != nullptr)
            {
                if (const auto spPlayer = CSGAnimPlayer::Create(p))
                {
                    spPlayer->Bind();
                    spPlayer->Update();
                }
            }
            if (CSGData_GeomBounds* pBounds = p->FindData<CSGData_GeomBounds>())
            {
                pBounds->GetSphere();
            }
        }
        spScene->OutputDebugInfo("");
        spScene->OutputGeomStats("");
    }
}
