// One step of a COLLADA target path: an id, or a scoped id below the step before.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

class CColladaSidIndex;

class CColladaTargetPathAtom
{
  public:
    explicit CColladaTargetPathAtom(CQDString strName) : m_strName(std::move(strName)) {}

    const CQDString& GetName() const { return m_strName; }
    // Null until it is resolved.
    daeElement* GetElement() const { return m_pElement; }

    // Find the element of the name: of a path's first atom by id, of the others by sid below the parent.
    // False (reported) when there is none, and the second time.
    bool ResolveStartElement(DAE& rDAE);
    bool ResolveElement(daeElement& rParent, CColladaSidIndex& rIndex);

  private:
    bool CheckUnresolved() const;

    CQDString m_strName;
    daeElement* m_pElement = nullptr;
};
