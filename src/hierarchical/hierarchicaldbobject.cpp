#include "hierarchical/hierarchicaldbobject.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QScopeGuard>

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
        Flips flips;
        parent->detach(this, flips);
        setParent(nullptr); // or who is told, and deletes the parent, would delete this again
        parent->tellChildren(flips);
    }
    deleteDescendants();
}

// From below, one after the other: destructors that call one another would use up the stack.
void HierarchicalDbObject::deleteDescendants()
{
    QVector<HierarchicalDbObject*> descendants;
    const auto release = [&descendants](HierarchicalDbObject* object) {
        for (HierarchicalDbObject* child : qAsConst(object->m_children))
            child->m_parent = nullptr;
        object->m_children.clear();
        // Backwards, so that each is its parent's first when its turn comes: that is found at once.
        const QObjectList& children = object->children();
        for (auto child = children.crbegin(); child != children.crend(); ++child) {
            if (auto* descendant = qobject_cast<HierarchicalDbObject*>(*child))
                descendants.append(descendant);
        }
    };
    release(this);
    for (int i = 0; i < descendants.size(); ++i)
        release(descendants[i]);
    QVector<Guarded> left(descendants.crbegin(), descendants.crend()); // some delete others
    for (const Guarded& descendant : qAsConst(left))
        delete descendant.data();
}

const char* HierarchicalDbObject::whyNot(int index, const HierarchicalDbObject* child) const
{
    if (child == nullptr)
        return "there is no child";
    if (index < 0 || index > m_children.size())
        return "there is no such place";
    if (child->thread() != thread())
        return "the child is of another thread:";
    if (child == this)
        return "an object cannot be its own child:";
    if (child->m_children.isEmpty())
        return nullptr; // above nobody
    for (const HierarchicalDbObject* above = m_parent; above != nullptr; above = above->m_parent) {
        if (above == child)
            return "the child is above its parent:";
    }
    return nullptr;
}

bool HierarchicalDbObject::insertChild(int index, HierarchicalDbObject* child)
{
    if (const char* reason = whyNot(index, child)) {
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

    Flips flips;
    if (oldParent != nullptr)
        oldParent->detach(child, flips);
    m_children.insert(index, child);
    child->m_parent = this;
    noteChange(flips);
    m_modifiedChildren += child->isModified() ? 1 : 0;
    const Guarded self(this), old(oldParent);
    child->setParent(this);
    if (old)
        Q_EMIT old->childrenChanged();
    if (self)
        self->tellChildren(flips);
    else
        tell(flips);
    return true;
}

bool HierarchicalDbObject::removeChild(HierarchicalDbObject* child)
{
    if (child == nullptr || child->m_parent != this) {
        logLine(LogLevel::Warning,
                "bool tools::HierarchicalDbObject::removeChild(tools::HierarchicalDbObject*)")
            << "is no child:" << child;
        return false;
    }
    Flips flips;
    detach(child, flips);
    const Guarded self(this);
    child->setParent(nullptr);
    if (self)
        self->tellChildren(flips);
    return true;
}

bool HierarchicalDbObject::moveChild(int from, int to)
{
    const int last = m_children.size() - 1;
    if (qMin(from, to) < 0 || qMax(from, to) > last) {
        logLine(LogLevel::Warning, "bool tools::HierarchicalDbObject::moveChild(int, int)")
            << "there is no such place" << from << to;
        return false;
    }
    if (from == to)
        return true;
    m_children.move(from, to);
    Flips flips;
    noteChange(flips);
    tellChildren(flips);
    return true;
}

void HierarchicalDbObject::detach(HierarchicalDbObject* child, Flips& flips)
{
    noteChange(flips);
    const bool isLast = m_children.constLast() == child;
    m_children.remove(isLast ? m_children.size() - 1 : m_children.indexOf(child));
    m_modifiedChildren -= child->isModified() ? 1 : 0;
    child->m_parent = nullptr;
    // QObject searches its own list from the front for the child that is about to leave: the last
    // one goes there, or deleting 40,000 from the end would take seconds.
    auto& siblings = const_cast<QObjectList&>(children());
    if (!siblings.isEmpty() && siblings.constLast() == child)
        siblings.prepend(siblings.takeLast());
}

// This object and those below, parents first: all, or those that were themselves changed, which are
// looked for only where something is modified.
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
    return callHooks(&HierarchicalDbObject::commitSelf,
                     "bool tools::HierarchicalDbObject::commit()");
}

bool HierarchicalDbObject::revert()
{
    return callHooks(&HierarchicalDbObject::revertSelf,
                     "bool tools::HierarchicalDbObject::revert()");
}

bool HierarchicalDbObject::callHooks(OwnHook hook, const char* signature)
{
    if (m_isCallingHooks) {
        logLine(LogLevel::Error, signature) << "called again by a hook of" << this;
        return false;
    }
    HookedObjects hooked;
    if (!callHooks(hook, signature, hooked))
        return false;
    Flips flips;
    for (const auto& [guarded, changesCount] : qAsConst(hooked)) {
        HierarchicalDbObject* const object = guarded;
        if (object != nullptr && object->m_changesCount == changesCount)
            object->forgetChange(flips);
    }
    tell(flips);
    return true;
}

bool HierarchicalDbObject::callHooks(OwnHook hook, const char* signature, HookedObjects& hooked)
{
    const Guarded self(this);
    m_isCallingHooks = true;
    const auto leave = qScopeGuard([&self] { // also when a hook throws
        if (HierarchicalDbObject* const object = self)
            object->m_isCallingHooks = false;
    });
    for (const Guarded& guarded : collect(Which::Changed)) {
        HierarchicalDbObject* const object = guarded;
        if (object == nullptr || !object->m_isChanged)
            continue;
        const bool isDone = (object->*hook)();
        if (!self || !isDone) {
            logLine(LogLevel::Error, signature)
                << (self ? "failed at" : "the tree was deleted by a hook") << guarded.data();
            return false;
        }
        if (guarded)
            hooked.append({guarded, object->m_changesCount});
    }
    return true;
}

void HierarchicalDbObject::setModified()
{
    Flips flips;
    noteChange(flips);
    tell(flips);
}

void HierarchicalDbObject::resetModified()
{
    Flips flips;
    for (HierarchicalDbObject* object : collect(Which::Changed))
        object->forgetChange(flips);
    tell(flips);
}

void HierarchicalDbObject::noteChange(Flips& flips)
{
    ++m_changesCount;
    const bool wasModified = isModified();
    m_isChanged = true;
    if (wasModified)
        return;
    logLine(LogLevel::Debug, "modified:") << this;
    flips.append(this);
    for (HierarchicalDbObject* above = m_parent; above != nullptr; above = above->m_parent) {
        const bool wasAboveModified = above->isModified();
        ++above->m_modifiedChildren;
        if (wasAboveModified)
            return;
        flips.append(above);
    }
}

void HierarchicalDbObject::forgetChange(Flips& flips)
{
    if (!m_isChanged)
        return;
    m_isChanged = false;
    for (HierarchicalDbObject* object = this; !object->isModified(); object = object->m_parent) {
        flips.append(object);
        if (object->m_parent == nullptr)
            return;
        --object->m_parent->m_modifiedChildren;
    }
}

// A handler may flip objects back that wait here for their turn; they then have nothing to tell.
void HierarchicalDbObject::tell(const Flips& flips)
{
    for (HierarchicalDbObject* object : flips) {
        if (object != nullptr && object->m_toldModified != object->isModified()) {
            object->m_toldModified = object->isModified();
            Q_EMIT object->modifiedChanged(object->m_toldModified);
        }
    }
}

} // namespace tools
