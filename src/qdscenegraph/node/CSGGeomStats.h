// What there is of geometry on a node or in a tree.
#pragma once

#include "qdcommon/CQDString.h"

#include <set>

struct CSGGeomStats
{
    int m_nVertexBuffers = 0;
    int m_nVertices = 0;
    int m_nGeoms = 0;
    int m_nTriangles = 0;
    int m_nLines = 0;
    std::set<CQDString> m_setVertexFormats; // their descriptions

    CSGGeomStats& operator+=(const CSGGeomStats& rOther)
    {
        m_nVertexBuffers += rOther.m_nVertexBuffers;
        m_nVertices += rOther.m_nVertices;
        m_nGeoms += rOther.m_nGeoms;
        m_nTriangles += rOther.m_nTriangles;
        m_nLines += rOther.m_nLines;
        m_setVertexFormats.insert(rOther.m_setVertexFormats.begin(), rOther.m_setVertexFormats.end());
        return *this;
    }
};
