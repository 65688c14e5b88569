#include "platform/component.h"

#include <atomic>

namespace drivewiz {

namespace {
std::atomic<int> g_applicationTag{0};
thread_local int t_formLoadDepth = 0;
thread_local int t_designDepth = 0;
} // namespace

Component::Component()
{
    if (t_formLoadDepth > 0) m_state = ComponentState(csLoading) | csReading;
    if (t_designDepth > 0) m_state |= csDesigning;
}

Component::~Component() = default;

FormLoadScope::FormLoadScope()
{
    ++t_formLoadDepth;
}

FormLoadScope::~FormLoadScope()
{
    --t_formLoadDepth;
}

bool FormLoadScope::active()
{
    return t_formLoadDepth > 0;
}

DesignScope::DesignScope()
{
    ++t_designDepth;
}

DesignScope::~DesignScope()
{
    --t_designDepth;
}

bool DesignScope::active()
{
    return t_designDepth > 0;
}

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
