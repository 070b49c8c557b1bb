#include "hierarchical/hierarchicaldbobject.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <algorithm>
#include <iterator>

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

HierarchicalDbObject::HierarchicalDbObject() = default;

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
    m_children.removeOne(child);
    m_modifiedChildren -= child->isModified() ? 1 : 0;
    child->m_parent = nullptr;
}

bool HierarchicalDbObject::walk(const std::function<bool(HierarchicalDbObject&)>& visit)
{
    QVector<Guarded> objects;
    QVector<HierarchicalDbObject*> waiting{this};
    while (!waiting.isEmpty()) {
        HierarchicalDbObject* const object = waiting.takeLast();
        objects.append(object);
        std::copy(object->m_children.crbegin(), object->m_children.crend(),
                  std::back_inserter(waiting));
    }
    for (const Guarded& guarded : qAsConst(objects)) {
        HierarchicalDbObject* const object = guarded;
        if (object != nullptr && !visit(*object))
            return false;
    }
    return true;
}

// Those that were themselves changed, parents first. Looks only where something is modified.
QVector<HierarchicalDbObject*> HierarchicalDbObject::changedObjects()
{
    QVector<HierarchicalDbObject*> objects, waiting{this};
    while (!waiting.isEmpty()) {
        HierarchicalDbObject* const object = waiting.takeLast();
        if (object->m_isChanged)
            objects.append(object);
        if (object->m_modifiedChildren > 0)
            std::copy_if(object->m_children.crbegin(), object->m_children.crend(),
                         std::back_inserter(waiting),
                         [](const HierarchicalDbObject* child) { return child->isModified(); });
    }
    return objects;
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

bool HierarchicalDbObject::callHooks(bool (HierarchicalDbObject::*hook)(), const char* signature)
{
    if (m_isCallingHooks) {
        logLine(LogLevel::Error, signature) << "called again by a hook of" << this;
        return false;
    }
    struct Done
    {
        Guarded object;
        quint64 changesCount;
    };
    QVector<Done> done;
    const Guarded self(this);
    m_isCallingHooks = true;
    bool areAllDone = true;
    const QVector<HierarchicalDbObject*> changed = changedObjects();
    for (const Guarded& guarded : QVector<Guarded>(changed.cbegin(), changed.cend())) {
        HierarchicalDbObject* const object = guarded;
        if (object == nullptr || !object->m_isChanged)
            continue;
        areAllDone = (object->*hook)();
        if (!self || !areAllDone) {
            logLine(LogLevel::Error, signature)
                << (self ? "failed at" : "the tree was deleted by a hook") << guarded.data();
            break;
        }
        if (guarded)
            done.append({guarded, object->m_changesCount});
    }
    if (!self)
        return false;
    m_isCallingHooks = false;
    if (!areAllDone)
        return false;
    Flips flips;
    for (const Done& hooked : qAsConst(done)) {
        HierarchicalDbObject* const object = hooked.object;
        if (object != nullptr && object->m_changesCount == hooked.changesCount)
            object->forgetChange(flips);
    }
    tell(flips);
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
    for (HierarchicalDbObject* object : changedObjects())
        object->forgetChange(flips);
    tell(flips);
}

bool HierarchicalDbObject::commitSelf()
{
    return true;
}

bool HierarchicalDbObject::revertSelf()
{
    return true;
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

void HierarchicalDbObject::tellChildren(const Flips& flips)
{
    Q_EMIT childrenChanged();
    tell(flips);
}

} // namespace tools
