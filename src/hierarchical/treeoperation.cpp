#include "hierarchical/treeoperation_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QScopeGuard>

#include <algorithm>

namespace tools
{

namespace
{

LogFormatter logError(const char* signature)
{
    LogFormatter line(LogLevel::Error);
    line.log(Log::Hierarchic) << signature;
    return line;
}

} // namespace

bool HierarchicalDbObject::TreeOperation::run()
{
    if (root->m_isCallingHooks) {
        logError(signature) << "called again by a hook of" << root;
        return false;
    }
    if (!callHooks())
        return false;
    StateChanges changes;
    for (const auto& [guarded, changesCount] : qAsConst(done)) {
        HierarchicalDbObject* const object = guarded;
        if (object != nullptr && object->m_changesCount == changesCount)
            object->markUnchanged(changes);
    }
    announce(changes);
    return true;
}

bool HierarchicalDbObject::TreeOperation::callHooks()
{
    root->m_isCallingHooks = true;
    const auto leave = qScopeGuard([this] { // also when a hook throws
        if (aliveRoot)
            root->m_isCallingHooks = false;
    });
    const QVector<Guarded> objects = root->collect(Which::Changed);
    return std::all_of(objects.cbegin(), objects.cend(),
                       [this](const Guarded& object) { return callHook(object); });
}

bool HierarchicalDbObject::TreeOperation::callHook(const Guarded& guarded)
{
    HierarchicalDbObject* const object = guarded;
    if (object == nullptr || !object->m_isChanged)
        return true;
    const bool isDone = (object->*hook)();
    if (!aliveRoot || !isDone) {
        logError(signature) << (aliveRoot ? "failed at" : "the tree was deleted by a hook")
                            << guarded.data();
        return false;
    }
    if (guarded)
        done.append({guarded, object->m_changesCount});
    return true;
}

} // namespace tools
