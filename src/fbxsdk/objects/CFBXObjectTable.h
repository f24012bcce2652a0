// The objects of an FBX file, their properties and the connections between them.
//
// Whatever the version of the file, the table has the shape of version 7: what older ones write inside of a
// model (geometry, camera, light), with names for ids, or as takes, becomes objects and connections like
// those.
//
//  - A model's mesh is a "Geometry" connected to it, a camera, light or joint a "NodeAttribute".
//  - Deformers are connected to the geometry.
//  - Textures are connected to properties of materials ("DiffuseColor").
//  - A take is an "AnimationStack" with "LocalStart" and "LocalStop", with one "AnimationLayer"; its channels
//  are
//    "AnimationCurveNode" objects, connected to the layer and to the property they drive ("Lcl Translation"),
//    and "AnimationCurve" objects, connected to the "d|X" and so on of those. The record of such a curve is
//    the file's "Channel" record.
#pragma once

#include "fbxsdk/document/CFBXDocument.h"
#include "fbxsdk/objects/CFBXConnection.h"
#include "fbxsdk/objects/CFBXIdHash.h"
#include "fbxsdk/objects/CFBXObject.h"
#include "fbxsdk/objects/FBXObjectName.h"
#include "qdcommon/CQDString.h"

#include <deque>
#include <memory>
#include <memory_resource>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

class CFBXObjectTable
{
  public:
    static constexpr int64_t ROOT_ID = 0;
    static constexpr int64_t USUAL_TICKS = 127;

    CFBXObjectTable(const CFBXObjectTable&) = delete;
    CFBXObjectTable& operator=(const CFBXObjectTable&) = delete;

    // Takes the document. Null, with the reason in the error, when the file has no objects that could be read
    // at all; single objects and connections that are wrong are left out, with a line each.
    static std::unique_ptr<CFBXObjectTable> Create(std::unique_ptr<CFBXDocument> spDocument,
                                                   CQDString& rError);

    const CFBXDocument& GetDocument() const { return *m_spDocument; }
    // Has properties only ("UpAxis", "TimeMode", "UnitScaleFactor", ...); is not among the objects.
    const CFBXObject& GetGlobalSettings() const { return m_objGlobalSettings; }
    // The stack that the file was saved with ("Take 001"); may be empty or name none.
    std::string_view GetActiveStackName() const { return m_strActiveStack; }
    std::string_view GetCreator() const { return m_strCreator; }
    // The document's objects are encrypted or locked by a password.
    bool IsPasswordProtected() const { return m_bPasswordProtected; }
    // What the file says of the ticks that it counts time in.
    int64_t GetTicksDefinition() const { return m_nTicksDefinition; }

    // In file order; the root is not among them.
    const std::deque<CFBXObject>& GetObjects() const { return m_listObjects; }
    // Null when there is none; the root has no object.
    const CFBXObject* FindObject(int64_t nId) const;
    // What a record inside of an object (the node of a pose) refers to: by id, in older files by full name.
    const CFBXObject* FindObject(const CFBXValue& rReference) const;

    // In file order. What is connected to the object, and what it is connected to; both ends always exist.
    std::span<const CFBXConnection> GetSources(int64_t nId) const;
    std::span<const CFBXConnection> GetDestinations(int64_t nId) const;

    // For those who fill the table.
    // Null, with a line, when the id is taken. The object stays where it is.
    CFBXObject* AddObject(const CFBXObject& rObject);
    // An object that the file does not number: makes an id that no other has.
    CFBXObject& AddUnnumberedObject(const CFBXObject& rObject);
    // The full name ("Model::Box") by which an older file refers to the object; false when it is taken.
    bool AddName(std::string_view strFullName, CFBXObject& rObject);
    CFBXObject* FindObjectByName(std::string_view strFullName);
    // Both ends must be known at the latest when all are added.
    void AddConnection(const CFBXConnection& rConnection) { m_vecBySource.push_back(rConnection); }
    // Copies that live as long as the table.
    std::string_view KeepText(std::string_view strText);
    std::span<const CFBXValue> KeepValues(std::span<const CFBXValue> spanValues);
    // Stays where it is.
    CFBXProperties& AddTemplate() { return m_listTemplates.emplace_back(); }
    CFBXObject& GetGlobalSettings() { return m_objGlobalSettings; }
    void SetActiveStackName(std::string_view strName) { m_strActiveStack = LimitFBXName(strName); }

  private:
    CFBXObjectTable() = default;
    bool ReadObjects(CQDString& rError);
    void ReadHeader();
    bool HasEnds(const CFBXConnection& rConnection) const;
    void SortConnections();

    std::unique_ptr<CFBXDocument> m_spDocument;
    std::deque<CFBXObject> m_listObjects;
    // What the maps consist of lies side by side, and goes at once.
    std::pmr::monotonic_buffer_resource m_objMapMemory;
    std::pmr::unordered_map<int64_t, const CFBXObject*, CFBXIdHash> m_mapObjects{&m_objMapMemory};
    std::pmr::unordered_map<std::string_view, CFBXObject*> m_mapNames{&m_objMapMemory};
    std::vector<CFBXConnection> m_vecBySource;
    std::vector<CFBXConnection> m_vecByDestination;
    std::deque<CFBXProperties> m_listTemplates;
    std::deque<CQDString> m_listTexts;
    std::deque<std::vector<CFBXValue>> m_listValues;
    CFBXObject m_objGlobalSettings;
    std::string_view m_strActiveStack;
    std::string_view m_strCreator;
    int64_t m_nNextId = 1;
    int64_t m_nTicksDefinition = USUAL_TICKS;
    bool m_bPasswordProtected = false;
};
