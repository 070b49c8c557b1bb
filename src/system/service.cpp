#include "system/service.h"

namespace zeltools::system
{

Service::Service(Id id, QObject* parent)
    : QObject(parent)
    , m_id(id)
{
    qRegisterMetaType<Id>();
}

Service::~Service() = default;

} // namespace zeltools::system
