// What is asked of reading a file. Everything is read, so there is nothing to be set.
#pragma once

#include "qdcommon/CQDString.h"

#include <memory>

class FbxManager;

constexpr const char* IOSROOT = "IOSRoot";

class FbxIOSettings
{
  public:
    // Null (reported) without a manager.
    static std::unique_ptr<FbxIOSettings> Create(FbxManager* pManager, CQDString strName);

    const CQDString& GetName() const { return m_strName; }

  private:
    explicit FbxIOSettings(CQDString strName) : m_strName(std::move(strName)) {}

    CQDString m_strName;
};
