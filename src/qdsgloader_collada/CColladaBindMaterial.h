// The materials that an instance of a geometry gives to the geometry's material symbols.
#pragma once

#include "qdsgloader_collada/CColladaInstanceMaterial.h"

#include <vector>

class CColladaBindMaterial
{
  public:
    using CMaterialPtr = boost::intrusive_ptr<CColladaInstanceMaterial>;

    // Those of <technique_common>, in its order.
    void LoadBindMaterial(const ColladaDOM141::domBind_material& rBindMaterial,
                          CColladaMaterials& rMaterials);
    // False (reported) for null.
    bool AddMaterial(const CMaterialPtr& spMaterial);
    int32_t GetNumMaterials() const { return static_cast<int32_t>(m_vecMaterials.size()); }
    // Null (reported) for an index outside.
    const CColladaInstanceMaterial* GetMaterial(int32_t nIndex) const;

  private:
    std::vector<CMaterialPtr> m_vecMaterials;
};
