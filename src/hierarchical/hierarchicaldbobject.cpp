#include "hierarchical/hierarchicaldbobject.h"

#include "hierarchical/treeoperation_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"

#include <algorithm>

namespace tools
{

namespace
{

LogFormatter logLine(LogLevel::Level level, const char* signature)
{
    LogFormatter line(level);
    line.log(Log::Hierarchic) << signature;
    return line;
}

} // namespace

HierarchicalDbObject::~HierarchicalDbObject()
{
    if (HierarchicalDbObject* const parent = m_parent) {
        StateChanges changes;
        parent->detach(this, changes);
        // A receiver of the signal may delete the parent, which must not delete this object again.
        setParent(nullptr);
        parent->announceChildren(changes);
    }
    deleteDescendants();
}

// Deletes the lowest objects first, in a loop: destructors that call one another would use up the
// stack.
void HierarchicalDbObject::deleteDescendants()
{
    QVector<HierarchicalDbObject*> descendants;
    const auto release = [&descendants](HierarchicalDbObject* object) {
        for (HierarchicalDbObject* child : qAsConst(object->m_children))
            child->m_parent = nullptr;
        object->m_children.clear();
        // In reverse order, so that each object is its parent's first child when it is deleted,
        // which QObject finds immediately.
        const QObjectList& children = object->children();
        for (auto child = children.crbegin(); child != children.crend(); ++child) {
            if (auto* descendant = qobject_cast<HierarchicalDbObject*>(*child))
                descendants.append(descendant);
        }
    };
    release(this);
    for (int i = 0; i < descendants.size(); ++i)
        release(descendants[i]);
    QVector<Guarded> left(descendants.crbegin(),
                          descendants.crend()); // a destructor may delete others
    for (const Guarded& descendant : qAsConst(left))
        delete descendant.data();
}

const char* HierarchicalDbObject::insertionError(int index, const HierarchicalDbObject* child) const
{
    if (child == nullptr)
        return "the child is null";
    if (index < 0 || index > m_children.size())
        return "there is no such index";
    if (child->thread() != thread())
        return "the child belongs to another thread:";
    if (child == this)
        return "an object cannot be its own child:";
    if (child->m_children.isEmpty())
        return nullptr; // An object without children is not above its parent.
    for (const HierarchicalDbObject* above = m_parent; above != nullptr; above = above->m_parent) {
        if (above == child)
            return "the child is an ancestor of its parent:";
    }
    return nullptr;
}

bool HierarchicalDbObject::insertChild(int index, HierarchicalDbObject* child)
{
    if (const char* reason = insertionError(index, child)) {
        logLine(LogLevel::Warning,
                "bool tools::HierarchicalDbObject::insertChild(int, tools::HierarchicalDbObject*)")
            << reason << index << child;
        return false;
    }
    HierarchicalDbObject* const oldParent = child->m_parent;
    if (oldParent == this) {
        const int from = m_children.indexOf(child);
        return moveChild(from, index > from ? index - 1 : index);
    }

    StateChanges changes;
    if (oldParent != nullptr)
        oldParent->detach(child, changes);
    m_children.insert(index, child);
    child->m_parent = this;
    markChanged(changes);
    m_modifiedChildren += child->isModified() ? 1 : 0;
    const Guarded self(this), old(oldParent);
    child->setParent(this);
    if (old)
        Q_EMIT old->childrenChanged();
    if (self)
        self->announceChildren(changes);
    else
        announce(changes);
    return true;
}

bool HierarchicalDbObject::removeChild(HierarchicalDbObject* child)
{
    if (child == nullptr || child->m_parent != this) {
        logLine(LogLevel::Warning,
                "bool tools::HierarchicalDbObject::removeChild(tools::HierarchicalDbObject*)")
            << "is not a child:" << child;
        return false;
    }
    StateChanges changes;
    detach(child, changes);
    const Guarded self(this);
    child->setParent(nullptr);
    if (self)
        self->announceChildren(changes);
    return true;
}

bool HierarchicalDbObject::moveChild(int from, int to)
{
    const int last = m_children.size() - 1;
    if (qMin(from, to) < 0 || qMax(from, to) > last) {
        logLine(LogLevel::Warning, "bool tools::HierarchicalDbObject::moveChild(int, int)")
            << "there is no such index" << from << to;
        return false;
    }
    if (from == to)
        return true;
    m_children.move(from, to);
    StateChanges changes;
    markChanged(changes);
    announceChildren(changes);
    return true;
}

void HierarchicalDbObject::detach(HierarchicalDbObject* child, StateChanges& changes)
{
    markChanged(changes);
    const bool isLast = m_children.constLast() == child;
    m_children.remove(isLast ? m_children.size() - 1 : m_children.indexOf(child));
    m_modifiedChildren -= child->isModified() ? 1 : 0;
    child->m_parent = nullptr;
    // QObject searches its own list from the front for the child that leaves. The last child is
    // moved to the front; otherwise deleting 40,000 children from the end would take seconds.
    auto& siblings = const_cast<QObjectList&>(children());
    if (!siblings.isEmpty() && siblings.constLast() == child)
        siblings.prepend(siblings.takeLast());
}

// Returns this object and its descendants, parents first: all of them, or those that were changed
// themselves. For the latter, the function visits modified subtrees only.
QVector<HierarchicalDbObject::Guarded> HierarchicalDbObject::collect(Which which)
{
    QVector<Guarded> objects;
    QVector<HierarchicalDbObject*> waiting{this};
    while (!waiting.isEmpty()) {
        HierarchicalDbObject* const object = waiting.takeLast();
        if (which == Which::All || object->m_isChanged)
            objects.append(object);
        if (which == Which::Changed && object->m_modifiedChildren == 0)
            continue;
        for (auto child = object->m_children.crbegin(); child != object->m_children.crend();
             ++child) {
            if (which == Which::All || (*child)->isModified())
                waiting.append(*child);
        }
    }
    return objects;
}

bool HierarchicalDbObject::walk(const std::function<bool(HierarchicalDbObject&)>& visit)
{
    const QVector<Guarded> objects = collect(Which::All);
    return std::all_of(objects.cbegin(), objects.cend(), [&visit](const Guarded& object) {
        return object == nullptr || visit(*object);
    });
}

bool HierarchicalDbObject::commit()
{
    return TreeOperation{this, &HierarchicalDbObject::commitSelf,
                         "bool tools::HierarchicalDbObject::commit()"}
        .run();
}

bool HierarchicalDbObject::revert()
{
    return TreeOperation{this, &HierarchicalDbObject::revertSelf,
                         "bool tools::HierarchicalDbObject::revert()"}
        .run();
}

void HierarchicalDbObject::setModified()
{
    StateChanges changes;
    markChanged(changes);
    announce(changes);
}

void HierarchicalDbObject::resetModified()
{
    StateChanges changes;
    const QVector<Guarded> changed = collect(Which::Changed);
    for (HierarchicalDbObject* object : changed)
        object->markUnchanged(changes);
    announce(changes);
}

void HierarchicalDbObject::markChanged(StateChanges& changes)
{
    ++m_changesCount;
    const bool wasModified = isModified();
    m_isChanged = true;
    if (wasModified)
        return;
    logLine(LogLevel::Debug, "modified:") << this;
    changes.append(this);
    for (HierarchicalDbObject* above = m_parent; above != nullptr; above = above->m_parent) {
        const bool wasAboveModified = above->isModified();
        ++above->m_modifiedChildren;
        if (wasAboveModified)
            return;
        changes.append(above);
    }
}

void HierarchicalDbObject::markUnchanged(StateChanges& changes)
{
    if (!m_isChanged)
        return;
    m_isChanged = false;
    for (HierarchicalDbObject* object = this; !object->isModified(); object = object->m_parent) {
        changes.append(object);
        if (object->m_parent == nullptr)
            return;
        --object->m_parent->m_modifiedChildren;
    }
}

// A receiver may change the state of a later object back, which then emits nothing.
void HierarchicalDbObject::announce(const StateChanges& changes)
{
    for (HierarchicalDbObject* object : changes) {
        if (object != nullptr && object->m_announcedModified != object->isModified()) {
            object->m_announcedModified = object->isModified();
            Q_EMIT object->modifiedChanged(object->m_announcedModified);
        }
    }
}

} // namespace tools
