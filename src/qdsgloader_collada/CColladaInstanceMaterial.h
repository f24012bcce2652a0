// The material that an instance of a geometry gives to one of the geometry's material symbols.
#pragma once

#include "qdscenegraph/material/CSGData_Material.h"
#include "qdsgloader_collada/CColladaMaterials.h"

class CColladaInstanceMaterial : public CRefObject
{
  public:
    // The <instance_material>; a material that is missing or failed is reported.
    static boost::intrusive_ptr<CColladaInstanceMaterial> LoadInstanceMaterial(
        ColladaDOM141::domInstance_material& rInstance, CColladaMaterials& rMaterials);

    const CQDString& GetMaterialSymbol() const { return m_strSymbol; }
    // The name of the material, else the symbol.
    const CQDString& GetGlobalName() const { return m_strGlobalName; }
    const CQDString& GetLocalName() const { return m_strLocalName; }
    // Null for a material that is missing or failed.
    const boost::intrusive_ptr<CSGData_Material>& GetMaterialData() const { return m_spData; }

  private:
    // The numbers of the texture-coordinate sets that the instance binds to semantics of the material.
    static CColladaEffectWithTextures::CSetOfSemantic GetTexCoordSets(
        const ColladaDOM141::domInstance_material& rInstance);

    CQDString m_strSymbol;
    CQDString m_strGlobalName;
    CQDString m_strLocalName;
    boost::intrusive_ptr<CSGData_Material> m_spData;
};
