#pragma once

#include "hierarchical/hierarchicaldbobject.h"

#include <utility>

namespace tools
{

/// One commit() or revert(): calls the hooks of an object and its descendants, and resets the
/// objects when all hooks have succeeded.
struct Q_DECL_HIDDEN HierarchicalDbObject::TreeOperation
{
    HierarchicalDbObject* root;
    bool (HierarchicalDbObject::*hook)();
    const char* signature;    ///< of the public method, for the log
    Guarded aliveRoot = root; ///< null as soon as a hook deletes the root
    /// The objects whose hook has succeeded, with the count of their changes at that time.
    QVector<std::pair<Guarded, quint64>> done = {};

    bool run();

private:
    bool callHooks();
    bool callHook(const Guarded& guarded);
};

} // namespace tools
