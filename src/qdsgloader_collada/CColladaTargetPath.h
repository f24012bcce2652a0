// The target of a COLLADA channel, taken apart: "arm/rotateX.ANGLE" is the atoms "arm" and "rotateX" and the
// member "ANGLE".
#pragma once

#include "qdcommon/CRefObject.h"
#include "qdsgloader_collada/CColladaTargetPathAtom.h"

#include <cstdint>
#include <string_view>
#include <vector>

class CColladaTargetPath : public CRefObject
{
  public:
    // No target that can be animated has as many atoms. A longer path keeps only these, and does not resolve.
    static constexpr size_t MAX_ATOMS = 16;

    // Selectors like "(3)" are part of the text they stand in.
    explicit CColladaTargetPath(std::string_view strPath);

    int32_t GetNumAtoms() const { return static_cast<int32_t>(m_vecAtoms.size()); }
    // In path order; there is at least one. The index must be in range.
    const CColladaTargetPathAtom& GetAtom(int32_t nIndex) const
    {
        return m_vecAtoms[static_cast<size_t>(nIndex)];
    }
    // Empty when there is none.
    const CQDString& GetMember() const { return m_strMember; }

    // Finds the element of every atom, each below the one before. False (reported) when one is not there.
    bool ResolveElements(DAE& rDAE, CColladaSidIndex& rIndex);

  private:
    std::vector<CColladaTargetPathAtom> m_vecAtoms;
    CQDString m_strMember;
    bool m_bTooLong = false;
};
