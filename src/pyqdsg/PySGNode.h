// The Python type of scene-graph nodes, "qdsg.SGNode".
#pragma once

#include "pyqdsg/PyCompat.h"

#include "qdscenegraph/node/CSGNode.h"

// A node has at most one wrapper while one lives; its CSGData_PySGNode knows it.
struct PySGNode
{
    PyObject_HEAD CSGNode::CNodePtr m_spNode;
};

extern PyTypeObject PySGNode_Type;

// The wrapper of a node as a new reference; null with an exception on failure.
PyObject* PySGNode_get_from_SGNode(CSGNode* pNode);
