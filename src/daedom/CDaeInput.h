// Where a document's bytes come from: a local file, or memory.
#pragma once

#include "qdcommon/CQDString.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

class CDaeInput
{
  public:
    // Each returns what is wrong, or nothing.
    CQDString OpenFile(const CQDString& rFileName);
    CQDString OpenMemory(std::string_view strDocument);

    // In bytes.
    uint64_t GetSize() const { return m_uiSize; }
    // Fills the buffer; less than that means the end. Nothing when the file cannot be read on.
    std::optional<size_t> Read(std::span<char> arrBuffer);

  private:
    struct CCloser
    {
        void operator()(std::FILE* pFile) const { std::fclose(pFile); }
    };
    std::unique_ptr<std::FILE, CCloser> m_spFile;
    std::string_view m_strRest; // of a document in memory
    uint64_t m_uiSize = 0;
};
