// The registry of the kinds of data that can be attached to a node.
#pragma once

#include "qdcommon/CQDString.h"

#include <cstddef>
#include <cstdint>
#include <map>

// The record of one kind of attachment, one static record per CSGData class. Ids are single bits, so that a
// data set keeps the kinds it holds as one mask. They are never written to files.
class CSGDataTypeInfo
{
  public:
    // At most 29 kinds: the top three bits of a data set's state word are its own.
    static constexpr uint32_t TYPE_MASK = 0x1FFFFFFF;

    // The order in which the kinds register: the init_priority of each static record.
    enum EOrder
    {
        ORDER_PYSGNODE = 1001,
        ORDER_GEOMETRY,
        ORDER_WORLD_TRANSFORM,
        ORDER_MATERIAL,
        ORDER_EFFECT,
        ORDER_LIGHT_SET,
        ORDER_LOCAL_TRANSFORM,
        ORDER_GEOM_BOUNDS,
        ORDER_LIGHT_ENV,
        ORDER_CAMERA,
        ORDER_RENDER_ENV,
        ORDER_ANIM_STACK,
        ORDER_PARAM_SET,
        ORDER_RENDER_STATE,
        ORDER_SKIN_BINDING_SET
    };

    class CTypeMap
    {
      public:
        // Gives the record the next bit; false (reported) when it has one, its name is taken or the bits are
        // used up. A second record under a name is accepted, without effect, when it allows multiple
        // attachments.
        bool Register(CSGDataTypeInfo* pTypeInfo);
        // Bits of unregistered kinds are not handed out again.
        void Unregister(CSGDataTypeInfo* pTypeInfo);

        // Null when there is no such kind.
        const CSGDataTypeInfo* Find(uint32_t uiTypeID) const;
        const CSGDataTypeInfo* Find(const CQDString& rName) const;

      private:
        uint32_t m_nNextTypeID = 1;
        std::map<uint32_t, CSGDataTypeInfo*> m_mapTypeIDs;
        std::map<CQDString, CSGDataTypeInfo*> m_mapTypeNames;
    };

    // A record that registers itself with the process's registry and unregisters when it is destroyed.
    explicit CSGDataTypeInfo(const char* szName, bool bAllowMultiple = false);
    // A record for a registry of one's own; it is registered by hand.
    CSGDataTypeInfo(const char* szName, bool bAllowMultiple, std::nullptr_t);
    CSGDataTypeInfo(const CSGDataTypeInfo&) = delete;
    CSGDataTypeInfo& operator=(const CSGDataTypeInfo&) = delete;
    ~CSGDataTypeInfo();

    // One bit; 0 while the kind is not registered.
    uint32_t GetTypeID() const { return m_nTypeID; }
    const CQDString& GetName() const { return m_strName; }
    // Whether a node may hold several attachments of this kind.
    bool AllowsMultiple() const { return m_bAllowMultiple; }

    static CTypeMap& GetTypeMap();

  private:
    uint32_t m_nTypeID = 0;
    CQDString m_strName;
    bool m_bAllowMultiple;
    CTypeMap* m_pTypeMap = nullptr;
};
