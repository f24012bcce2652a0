// One set of what a mesh says of its corners besides their places: normals, texture coordinates, colours.
#pragma once

#include "qdcommon/CQDString.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

class CFBXRecord;

// Values of a fixed number of floats, which is what becomes of them in the end, and which of them is whose.
// All that a file gets wrong is put right when an element is made, so that every corner of the mesh has a
// value: one that the file leaves out is zero, a colour white.
class FbxLayerElement
{
  public:
    enum EType
    {
        eNormal,      // 3 floats
        eTangent,     // 4: the last is the handedness, 1 or -1: bitangent = that * (normal x tangent). Never
                      // a file's: FbxMesh::GenerateTangentsData makes them.
        eUV,          // 2: from the lower left of the image
        eVertexColor, // 4: red, green, blue, alpha
        eTypeCount
    };

    // To what a value belongs.
    enum EMappingMode
    {
        eNone,
        eByControlPoint,
        eByPolygonVertex,
        eByPolygon,
        eByEdge, // never in an element that was made: no reader of ours draws edges
        eAllSame
    };

    // What a mesh has of each kind that values may belong to.
    struct CCounts
    {
        size_t m_uiControlPoints;
        size_t m_uiPolygonVertices;
        size_t m_uiPolygons;

        // 1 for eAllSame, 0 for modes that no element has.
        size_t Get(EMappingMode eMode) const;
    };

    // By the texts of files, old and odd ones included.
    static EMappingMode GetMappingMode(std::string_view strText);
    static int GetValueSize(EType eType) { return eType == eNormal ? 3 : eType == eUV ? 2 : 4; }

    // Of a record of the type ("LayerElementNormal", ...). Nothing for an element without values or with a
    // mapping that we do not know (reported).
    static std::optional<FbxLayerElement> Read(EType eType, const CFBXRecord& rRecord,
                                               const CCounts& rCounts);
    // Of values and indices into them; no indices: direct. The owner is for messages only.
    static std::optional<FbxLayerElement> Create(EType eType, CQDString strName, EMappingMode eMode,
                                                 std::vector<float>&& vecValues,
                                                 std::vector<int32_t>&& vecIndices, const CCounts& rCounts,
                                                 const CQDString& rOwner);

    EType GetType() const { return m_eType; }
    const CQDString& GetName() const { return m_strName; }
    EMappingMode GetMappingMode() const { return m_eMappingMode; }
    // Floats in a value.
    int GetValueSize() const { return GetValueSize(m_eType); }

    // The value of a corner: its number among the direct ones, always a valid one. The corner is given by its
    // polygon, its own number in the mesh and its control point.
    int32_t GetIndex(int32_t nPolygon, int32_t nPolygonVertex, int32_t nControlPoint) const
    {
        int32_t nKey = 0;
        switch (m_eMappingMode)
        {
        case eByControlPoint:
            nKey = nControlPoint;
            break;
        case eByPolygonVertex:
            nKey = nPolygonVertex;
            break;
        case eByPolygon:
            nKey = nPolygon;
            break;
        default:
            break;
        }
        return m_vecIndices.empty() ? nKey : m_vecIndices[static_cast<size_t>(nKey)];
    }
    // GetValueSize() floats.
    const float* GetValue(int32_t nIndex) const
    {
        return m_vecValues.data() + static_cast<size_t>(nIndex) * static_cast<size_t>(GetValueSize());
    }

    // Follows a change of the mesh: for each polygon or corner that there is now, which it was before.
    void Remap(std::span<const int32_t> arrPolygons, std::span<const int32_t> arrPolygonVertices);

  private:
    FbxLayerElement() = default;
    // Gives every corner a value. False (reported) when too few have one.
    bool Repair(const CCounts& rCounts, const CQDString& rOwner);

    EType m_eType = eNormal;
    EMappingMode m_eMappingMode = eNone;
    CQDString m_strName;
    std::vector<float> m_vecValues;
    std::vector<int32_t> m_vecIndices;
};
