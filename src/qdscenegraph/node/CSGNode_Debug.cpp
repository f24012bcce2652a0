// What nodes write to the log about themselves.

#include "qdscenegraph/node/CSGNode.h"

#include <algorithm>

namespace
{

// Deeper nodes are written with the indent of this depth: lines of a deep tree must not grow with its depth.
constexpr size_t MAX_INDENTED_DEPTH = 40;

// Calls the function with every node of the tree, in document order, and the indent of its depth.
template <class FUNCTION>
void ForEachIndented(const CSGNode* pRoot, const CQDString& rIndent, FUNCTION&& fnEach)
{
    size_t nDepth = 0;
    const CSGNode* pNode = pRoot;
    while (pNode != nullptr)
    {
        fnEach(*pNode, rIndent + CQDString(2 * std::min(nDepth, MAX_INDENTED_DEPTH), ' '));
        const CSGNode* pNext = pNode->GetNextInTree(pRoot);
        if (pNext != nullptr)
        {
            ++nDepth;
            for (const CSGNode* pAbove = pNode; pAbove != pNext->GetParent(); pAbove = pAbove->GetParent())
            {
                --nDepth;
            }
        }
        pNode = pNext;
    }
}

} // namespace

void CSGNode::OutputDebugInfoNonRecursive(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGNode: 0x%08llX Global Name: '%s' - Local Name: '%s'", rIndent,
        LogAddress(this), m_strGlobalName, m_strLocalName);
    m_objDataSet.ForEach([&](const CSGData* pData) { pData->OutputDebugInfo(rIndent + "  "); });
}

void CSGNode::OutputDebugInfo(const CQDString& rIndent) const
{
    ForEachIndented(this, rIndent, [](const CSGNode& rNode, const CQDString& rNodeIndent) {
        rNode.OutputDebugInfoNonRecursive(rNodeIndent);
    });
}

void CSGNode::OutputDebugGraph(const CQDString& rIndent) const
{
    ForEachIndented(this, rIndent, [](const CSGNode& rNode, const CQDString& rNodeIndent) {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sNode '%s'/'%s'", rNodeIndent, rNode.m_strGlobalName,
            rNode.m_strLocalName);
    });
}

void CSGNode::OutputTransformDebugInfo(const CQDString& rIndent) const
{
    ForEachIndented(this, rIndent, [](const CSGNode& rNode, const CQDString& rNodeIndent) {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sNode '%s'/'%s'", rNodeIndent, rNode.m_strGlobalName,
            rNode.m_strLocalName);
        rNode.m_objDataSet.ForEach(
            [&](const CSGData* pData) { pData->OutputTransformDebugInfo(rNodeIndent); });
    });
}

CSGGeomStats CSGNode::GetGeomStats() const
{
    CSGGeomStats objStats;
    m_objDataSet.ForEach([&](const CSGData* pData) { pData->AddGeomStats(objStats); });
    return objStats;
}

void CSGNode::OutputGeomStats(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sGeometry stats for tree rooted at: %s", rIndent, m_strGlobalName);
    CSGGeomStats objTotals;
    ForEachIndented(this, CQDString(), [&](const CSGNode& rNode, const CQDString& rNodeIndent) {
        const CSGGeomStats objStats = rNode.GetGeomStats();
        Log(QD_SCENEGRAPH, LOG_INFO,
            "%s    %-64.64s | vb=%03d | vtx=%05d | geoms=%03d | tris=%05d | lines=%05d", rIndent,
            rNodeIndent + rNode.m_strGlobalName.c_str(), objStats.m_nVertexBuffers, objStats.m_nVertices,
            objStats.m_nGeoms, objStats.m_nTriangles, objStats.m_nLines);
        objTotals += objStats;
    });
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%s---------------------------------------------------------------------+--------+-----------+-------"
        "----+"
        "------------+------------",
        rIndent);
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%s                                                              Totals | vb=%03d | vtx=%05d | "
        "geoms=%03d | "
        "tris=%05d | lines=%05d",
        rIndent, objTotals.m_nVertexBuffers, objTotals.m_nVertices, objTotals.m_nGeoms,
        objTotals.m_nTriangles, objTotals.m_nLines);
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%d VertexFormat(s):", static_cast<int>(objTotals.m_setVertexFormats.size()));
    for (const CQDString& rFormat : objTotals.m_setVertexFormats)
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%s    %s", rIndent, rFormat);
    }
}
