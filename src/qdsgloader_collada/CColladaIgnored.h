// Counts what is read over, so that the log names each kind once.
#pragma once

#include <cstddef>
#include <map>
#include <string_view>

class CColladaIgnored
{
  public:
    // The kind is a literal that goes on after "Ignoring 3 ". Kinds of which there are none do not count.
    void Add(std::string_view strKind, size_t nCount)
    {
        if (nCount > 0)
        {
            m_mapCounts[strKind] += nCount;
        }
    }
    // Writes one line a kind at the warning level.
    void LogAll() const;

  private:
    std::map<std::string_view, size_t> m_mapCounts;
};
