#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>
#include <utility>

namespace tools
{

/// A node of a tree of settings, recipes or the like that knows whether something in it or below it
/// has to be stored. Subclasses hold the data, call setModified() when it changes, and say how it
/// is stored and read back.
///
/// A parent owns its children (and is their QObject parent, for QML; leave setParent() alone inside
/// a tree). Everything belongs to one thread. An object may be deleted in any signal and hook,
/// trees may be 100,000 objects deep. Misuse and hooks that fail are logged under Log::Hierarchic.
class ZELTOOLS_EXPORT HierarchicalDbObject : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool modified READ isModified NOTIFY modifiedChanged)

public:
    HierarchicalDbObject() = default;
    /// Deletes what is below; in its parent it counts as removed.
    ~HierarchicalDbObject() override;

    HierarchicalDbObject* parentObject() const { return m_parent; }
    const QVector<HierarchicalDbObject*>& childObjects() const { return m_children; }

    /// The list of children is part of an object: whoever gets, loses or reorders one is modified.
    /// The child keeps its own state; a new one that is not stored yet says so by setModified().
    ///
    /// Puts the child before the one at `index`, from 0 to the number of children, or at the end,
    /// and takes it over from its old parent. False and a Warning, with nothing changed, when there
    /// is no such place, or the child is null, this object, above it, or of another thread.
    bool insertChild(int index, HierarchicalDbObject* child);
    bool addChild(HierarchicalDbObject* child) { return insertChild(m_children.size(), child); }
    /// Lets the child go, which then belongs to the caller; false when it is not one.
    bool removeChild(HierarchicalDbObject* child);
    /// Moves a child within the list; `to` is its index afterwards.
    bool moveChild(int from, int to);

    /// Whether this or something below it was changed since it was reset. A new object is not.
    bool isModified() const { return m_isChanged || m_modifiedChildren > 0; }

    /// Calls `visit` for this object and all below, parents first, until it returns false, and
    /// returns whether it never did. Those that were there at the beginning are visited, unless
    /// they have been deleted since; `visit` may change the tree.
    bool walk(const std::function<bool(HierarchicalDbObject& object)>& visit);

    /// Stores, or takes back, all changes in this object and below: calls commitSelf() or
    /// revertSelf() of each object that was itself changed, parents first, and resets them when all
    /// have returned true. The first false ends it with an Error and false; then all that was
    /// modified still is, so that the next try calls all hooks again: a store that can should roll
    /// back. What else changes an object after its hook, or is added meanwhile, stays modified.
    ///
    /// False, too, when a hook has deleted this object, or calls for the same object again. A hook
    /// that throws counts as one that returned false; the exception reaches the caller.
    bool commit();
    bool revert();

public Q_SLOTS:
    /// Notes that this object itself was changed. Costs a step up for each ancestor that was not
    /// modified so far.
    void setModified();
    /// Forgets all changes in this object and below, as after loading.
    void resetModified();

Q_SIGNALS:
    /// One for each object whose state is another than it last told, from below upwards, when the
    /// whole tree is up to date.
    void modifiedChanged(bool isModified);
    void childrenChanged();

protected:
    /// Puts the data of this object, children aside, into the store, or reads it back from there.
    /// What it changes in its own object counts as done. The base class has no data.
    virtual bool commitSelf() { return true; }
    virtual bool revertSelf() { return true; }

private:
    using Guarded = QPointer<HierarchicalDbObject>;
    using Flips = QVector<Guarded>; // objects whose state has flipped, in the order to tell it
    enum class Which { All, Changed };
    using OwnHook = bool (HierarchicalDbObject::*)();
    // The objects whose hook has succeeded, with the count of their changes at that time.
    using HookedObjects = QVector<std::pair<Guarded, quint64>>;

    const char* whyNot(int index, const HierarchicalDbObject* child) const;
    void detach(HierarchicalDbObject* child, Flips& flips);
    void deleteDescendants();
    QVector<Guarded> collect(Which which);
    bool callHooks(OwnHook hook, const char* signature);
    bool callHooks(OwnHook hook, const char* signature, HookedObjects& hooked);
    void noteChange(Flips& flips);
    void forgetChange(Flips& flips);
    static void tell(const Flips& flips);
    void tellChildren(const Flips& flips)
    {
        Q_EMIT childrenChanged();
        tell(flips);
    }

    HierarchicalDbObject* m_parent = nullptr;
    QVector<HierarchicalDbObject*> m_children;
    int m_modifiedChildren = 0;
    bool m_isChanged = false;    // itself
    bool m_toldModified = false; // by the last modifiedChanged()
    bool m_isCallingHooks = false;
    quint64 m_changesCount = 0;
};

} // namespace tools
