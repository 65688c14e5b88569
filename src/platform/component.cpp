#include "platform/component.h"

#include <atomic>

namespace drivewiz {

namespace {
std::atomic<int> g_applicationTag{0};
}

Component::~Component() = default;

void Component::Loaded()
{
    removeComponentState(ComponentState(csLoading) | csReading);
}

int ApplicationTag()
{
    return g_applicationTag.load();
}

void SetApplicationTag(int tag)
{
    g_applicationTag.store(tag);
}

} // namespace drivewiz
