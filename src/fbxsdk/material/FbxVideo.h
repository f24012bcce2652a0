// An image file, named or embedded.
#pragma once

#include "fbxsdk/base/FbxObject.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

class CFBXObjectTable;
class CFBXRecord;

class FbxVideo final : public FbxObject
{
  public:
    static std::unique_ptr<FbxVideo> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    // As the tool wrote them, often for another system.
    const CQDString& GetFileName() const { return m_strFileName; }
    const CQDString& GetRelativeFileName() const { return m_strRelativeFileName; }
    // The embedded image file, as it would be on disk; empty when there is none, or it is damaged (reported).
    // Lives as long as the video.
    std::span<const uint8_t> GetContent() const { return m_arrContent; }

  private:
    using FbxObject::FbxObject;
    void ReadContent(const CFBXRecord& rContent);

    CQDString m_strFileName;
    CQDString m_strRelativeFileName;
    std::span<const uint8_t> m_arrContent; // the document's bytes, or those below
    std::vector<uint8_t> m_vecContent;
};
