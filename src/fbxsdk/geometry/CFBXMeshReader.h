// Fills a mesh with what a file says of it.
#pragma once

#include "fbxsdk/geometry/FbxMesh.h"

#include <vector>

class CFBXRecord;

class CFBXMeshReader
{
  public:
    explicit CFBXMeshReader(FbxMesh& rMesh) : m_rMesh(rMesh) {}

    // False (reported) when the points or polygons cannot be read.
    bool Read(const CFBXObject& rObject);

  private:
    bool ReadPolygons(const CFBXRecord& rRecord);
    void ReadLayerElements(const CFBXRecord& rRecord);
    // False (reported once) when the mesh has enough elements of the type.
    bool HasRoom(FbxLayerElement::EType eType);
    void AddElement(std::optional<FbxLayerElement>&& objElement);
    void ReadMaterials(const CFBXRecord& rRecord, std::string_view strMapping);
    void ReadHoles(const CFBXRecord& rRecord);
    // Of files of version 5800 and before, which have no layers.
    void ReadOldNormals(const CFBXRecord& rRecord);
    void ReadOldUVs(const CFBXRecord& rRecord);
    void RemoveDroppedPolygons();

    FbxMesh& m_rMesh;
    CQDString m_strDescription;     // for messages
    std::vector<bool> m_vecDropped; // empty: no polygon
    bool m_bToldOfElements = false;
};
