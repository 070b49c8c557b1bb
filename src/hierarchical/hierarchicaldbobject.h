#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>

namespace tools
{

/// A node in a tree of settings, recipes or similar data that tracks whether it or a descendant has
/// unsaved changes. Subclasses hold the data, call setModified() when it changes, and implement
/// storing and reading it.
///
/// A parent owns its children (and is their QObject parent for QML; do not call setParent() inside
/// a tree). A tree belongs to one thread. An object may be deleted in any signal and hook, and
/// trees may be 100,000 objects deep. Misuse and failed hooks are logged under Log::Hierarchic.
class ZELTOOLS_EXPORT HierarchicalDbObject : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool modified READ isModified NOTIFY modifiedChanged)

public:
    HierarchicalDbObject() = default;
    /// Deletes the descendants. For the parent, this object counts as removed.
    ~HierarchicalDbObject() override;

    /// The parent, or null for the root of a tree.
    HierarchicalDbObject* parentObject() const { return m_parent; }
    /// The children in their order.
    const QVector<HierarchicalDbObject*>& childObjects() const { return m_children; }

    /// Inserts the child before the one at `index`, which is from 0 to the number of children (the
    /// end), and removes it from its old parent. Returns false with a Warning and changes nothing
    /// if there is no such index, or if the child is null, this object, an ancestor, or of another
    /// thread.
    ///
    /// The list of children is part of an object: an object that gets, loses or reorders a child is
    /// modified. The child keeps its own state; a new child that is not stored yet calls
    /// setModified().
    bool insertChild(int index, HierarchicalDbObject* child);
    /// Inserts the child after the last one, see insertChild().
    bool addChild(HierarchicalDbObject* child) { return insertChild(m_children.size(), child); }
    /// Removes the child, which then belongs to the caller. Returns false if it is not a child.
    bool removeChild(HierarchicalDbObject* child);
    /// Moves a child within the list; `to` is its index afterwards.
    bool moveChild(int from, int to);

    /// Whether this object or a descendant was changed since it was reset. A new object is not
    /// modified.
    bool isModified() const { return m_isChanged || m_modifiedChildren > 0; }

    /// Calls `visit` for this object and all descendants, parents first, until it returns false.
    /// Returns whether all calls returned true. `visit` may change the tree: the function visits
    /// the objects that existed at the beginning and have not been deleted since.
    bool walk(const std::function<bool(HierarchicalDbObject& object)>& visit);

    /// Store or revert all changes in this object and its descendants. They call commitSelf() or
    /// revertSelf() of each object that was itself changed, parents first, and reset these objects
    /// when all calls have returned true. The first false ends the operation with an Error line and
    /// the result false. All objects then stay modified, and the next try calls all hooks again,
    /// so that a store should roll back. An object that changes after its hook, or is added
    /// meanwhile, stays modified.
    ///
    /// They also return false if a hook has deleted this object, and for a call from a hook for the
    /// same object. A hook that throws counts as one that returned false; the exception reaches the
    /// caller.
    bool commit();
    /// Works like commit() with revertSelf().
    bool revert();

public Q_SLOTS:
    /// Marks this object itself as changed. The cost is proportional to the number of ancestors
    /// that were not modified before.
    void setModified();
    /// Resets this object and its descendants to unmodified, as after loading.
    void resetModified();

Q_SIGNALS:
    /// Emitted by each object whose state differs from the one it emitted last, from below upwards,
    /// when the whole tree is up to date.
    void modifiedChanged(bool isModified);
    /// Announces that a child was added, removed or moved.
    void childrenChanged();

protected:
    /// The hooks that store the data of this object without its children, or read it back. Changes
    /// that a hook makes to its own object are part of the operation. The base class has no data.
    virtual bool commitSelf() { return true; }
    /// Reads the data back.
    virtual bool revertSelf() { return true; }

private:
    using Guarded = QPointer<HierarchicalDbObject>;
    // The objects whose isModified() has changed, in the order of their signals.
    using StateChanges = QVector<Guarded>;
    enum class Which { All, Changed };
    struct TreeOperation; // a running commit() or revert()

    const char* insertionError(int index, const HierarchicalDbObject* child) const;
    void detach(HierarchicalDbObject* child, StateChanges& changes);
    void deleteDescendants();
    QVector<Guarded> collect(Which which);
    void markChanged(StateChanges& changes);
    void markUnchanged(StateChanges& changes);
    static void announce(const StateChanges& changes);
    void announceChildren(const StateChanges& changes)
    {
        Q_EMIT childrenChanged();
        announce(changes);
    }

    HierarchicalDbObject* m_parent = nullptr;
    QVector<HierarchicalDbObject*> m_children;
    int m_modifiedChildren = 0;
    bool m_isChanged = false;         // itself
    bool m_announcedModified = false; // by the last modifiedChanged()
    bool m_isCallingHooks = false;
    quint64 m_changesCount = 0;
};

} // namespace tools
