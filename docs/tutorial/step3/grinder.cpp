#include "grinder.h"

Grinder::~Grinder() = default;
