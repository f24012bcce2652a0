// What there is of geometry on a node or in a tree.
#pragma once

#include "qdcommon/CQDString.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <set>

struct CSGGeomStats
{
    int m_nVertexBuffers = 0;
    int m_nVertices = 0;
    int m_nGeoms = 0;
    int m_nTriangles = 0;
    int m_nLines = 0;
    std::set<CQDString> m_setVertexFormats; // their descriptions

    // Nodes and bindings may share their geometry, so that there is no end to what they add up to: the
    // largest int stands for all that is more.
    static void AddCount(int& rSum, int64_t nCount)
    {
        rSum = static_cast<int>(std::min<int64_t>(rSum + nCount, std::numeric_limits<int>::max()));
    }

    CSGGeomStats& operator+=(const CSGGeomStats& rOther)
    {
        AddCount(m_nVertexBuffers, rOther.m_nVertexBuffers);
        AddCount(m_nVertices, rOther.m_nVertices);
        AddCount(m_nGeoms, rOther.m_nGeoms);
        AddCount(m_nTriangles, rOther.m_nTriangles);
        AddCount(m_nLines, rOther.m_nLines);
        m_setVertexFormats.insert(rOther.m_setVertexFormats.begin(), rOther.m_setVertexFormats.end());
        return *this;
    }
};
