#include "logging/logeventmodule.h"

LogEventModule::~LogEventModule() = default;
