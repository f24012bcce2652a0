// Who is computed from whom: how the caches of transforms learn that they are out of date.
#pragma once

class CSGDirtyGraphLink;

// A value that others may be computed from, or that is computed from others. Whoever caches such a value
// keeps this rule: a valid cache has nothing but valid ones among those that it is computed from. So what is
// dirty already need not pass a change on; a change costs as much as the caches that it invalidates, and even
// links in a circle come to an end.
class CSGDirtyGraphNode
{
  public:
    CSGDirtyGraphNode(const CSGDirtyGraphNode&) = delete;
    CSGDirtyGraphNode& operator=(const CSGDirtyGraphNode&) = delete;

    // This value, or one that it is computed from, has changed: tells all that are computed from it. A cache
    // overrides it and returns at once when it is dirty already.
    virtual void MarkDirty();
    // Whether more than one link leads to this value.
    bool IsShared() const;

  protected:
    CSGDirtyGraphNode() = default;
    virtual ~CSGDirtyGraphNode() = default;

  private:
    friend class CSGDirtyGraphLink;

    CSGDirtyGraphLink* m_pFirstLink = nullptr; // all links to this value
};

// One dependency; it belongs to the dependent, and the source knows it for as long as it stands. Making and
// dropping one takes the same time however many there are. The owner of the link keeps the source alive.
class CSGDirtyGraphLink
{
  public:
    explicit CSGDirtyGraphLink(CSGDirtyGraphNode* pDependent) : m_pDependent(pDependent) {}
    CSGDirtyGraphLink(const CSGDirtyGraphLink&) = delete;
    CSGDirtyGraphLink& operator=(const CSGDirtyGraphLink&) = delete;
    CSGDirtyGraphLink(CSGDirtyGraphLink&& rOther) noexcept;
    ~CSGDirtyGraphLink() { Disconnect(); }

    CSGDirtyGraphNode* GetDependent() const { return m_pDependent; }
    // Takes the place of the former source.
    void Connect(CSGDirtyGraphNode* pSource);
    void Disconnect();

  private:
    friend class CSGDirtyGraphNode;

    CSGDirtyGraphNode* m_pDependent;
    CSGDirtyGraphLink* m_pNext = nullptr;
    CSGDirtyGraphLink** m_ppToThis =
        nullptr; // what points at this link: its source or the link before; null while not connected
};
