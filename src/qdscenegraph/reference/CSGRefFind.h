// How each kind of reference finds its object: the one field that the kind keeps, and the search.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/material/CSGMaterial.h"
#include "qdscenegraph/target/CSGATFTarget.h"

class CSGRefContext;

// Find has an object to search from, and is null when there is nothing to find. Names are compared as they
// are; nothing is found by the empty name.

// The object itself; the field says which part of it is meant.
struct CSGRefFind_Target
{
    using CField = ETarget;
    static constexpr const char* REF_NAME = "CSGRef_Target";
    static constexpr const char* ATF_REF_NAME = "CSGATFRef_Target";
    static CSGStreamable* Find(CSGStreamable* pFrom, CField eTarget, CSGRefContext* pContext);
};

// From a node, its attachment of the kind with the name, "CSGData_LocalTransform" for example.
struct CSGRefFind_DataByType
{
    using CField = CQDCompactString;
    static constexpr const char* REF_NAME = "CSGRef_DataByType";
    static constexpr const char* ATF_REF_NAME = "CSGATFRef_DataByType";
    static CSGStreamable* Find(CSGStreamable* pFrom, const CField& rTypeName, CSGRefContext* pContext);
};

// From a node, the first node of its tree, itself included, with the global name.
struct CSGRefFind_DescendantNodeByGlobalName
{
    using CField = CQDCompactString;
    static constexpr const char* REF_NAME = "CSGRef_DescendantNodeByGlobalName";
    static constexpr const char* ATF_REF_NAME = "CSGATFRef_DescendantNodeByGlobalName";
    static CSGStreamable* Find(CSGStreamable* pFrom, const CField& rName, CSGRefContext* pContext);
};

// From a node, the first node below it with the local name.
struct CSGRefFind_ChildNodeByLocalName
{
    using CField = CQDCompactString;
    static constexpr const char* ATF_REF_NAME = "CSGATFRef_ChildNodeByLocalName";
    static CSGStreamable* Find(CSGStreamable* pFrom, const CField& rName, CSGRefContext* pContext);
};

// From a node, the first material with the global name that a node of its tree is drawn with.
struct CSGRefFind_MaterialByGlobalName
{
    using CField = CQDCompactString;
    static constexpr const char* REF_NAME = "CSGRef_MaterialByGlobalName";
    static constexpr const char* ATF_REF_NAME = "CSGATFRef_MaterialByGlobalName";
    static CSGStreamable* Find(CSGStreamable* pFrom, const CField& rName, CSGRefContext* pContext);
};

// From a material, the parameter in a slot.
struct CSGRefFind_MaterialParam
{
    using CField = CSGMaterial::EParam;
    static constexpr const char* REF_NAME = "CSGRef_MaterialParam";
    static constexpr const char* ATF_REF_NAME = "CSGATFRef_MaterialParam";
    static CSGStreamable* Find(CSGStreamable* pFrom, CField eParam, CSGRefContext* pContext);
};

// From a local transform or a transform, the first transform with the name: the transform itself, or one that
// a list or a pair is made of, at any depth.
struct CSGRefFind_TransformByName
{
    using CField = CQDCompactString;
    static constexpr const char* REF_NAME = "CSGRef_TransformByName";
    static constexpr const char* ATF_REF_NAME = "CSGATFRef_TransformByName";
    static CSGStreamable* Find(CSGStreamable* pFrom, const CField& rName, CSGRefContext* pContext);
};
