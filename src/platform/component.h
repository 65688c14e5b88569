#ifndef DRIVEWIZ_PLATFORM_COMPONENT_H
#define DRIVEWIZ_PLATFORM_COMPONENT_H

#include "drivewiz_global.h"

#include <QFlags>

namespace drivewiz {

/// What a component is going through. While it is being loaded or read from a form
/// file, or edited in a form designer, it performs no look-ups, messages or host calls.
enum ComponentStateFlag {
    csLoading = 1,    ///< its form is being loaded; cleared by Loaded()
    csReading = 2,    ///< its properties are being read from the form file
    csDesigning = 4,  ///< it is being edited in Qt Designer
    csDestroying = 8, ///< it is being destroyed
};
Q_DECLARE_FLAGS(ComponentState, ComponentStateFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(ComponentState)

/// The component state of a library class; mixed into the widget classes. The form
/// loader sets csLoading and csReading and calls Loaded() once every property is set; the
/// Designer plugin sets csDesigning.
class DRIVEWIZ_EXPORT Component
{
public:
    /// A component created while a FormLoadScope lives starts loading and reading.
    Component();
    Component(const Component &) = delete;
    Component &operator=(const Component &) = delete;
    virtual ~Component();

    ComponentState componentState() const { return m_state; }
    void setComponentState(ComponentState state) { m_state = state; }
    void addComponentState(ComponentState flags) { m_state |= flags; }
    void removeComponentState(ComponentState flags) { m_state &= ~flags; }

    bool isDesigning() const { return m_state.testFlag(csDesigning); }
    bool isLoading() const { return m_state.testFlag(csLoading); }

    /// Called after all properties are set. Overrides call the base first: it clears
    /// csLoading and csReading.
    virtual void Loaded();

private:
    ComponentState m_state;
};

/// While a scope lives on a thread, components created on it start in the loading state,
/// as when the form loader creates them; forms built by uic wrap setupUi() in one and
/// then call Loaded() on their components (see TwizFormLoader::CallLoaded).
class DRIVEWIZ_EXPORT FormLoadScope
{
public:
    FormLoadScope();
    ~FormLoadScope();
    FormLoadScope(const FormLoadScope &) = delete;
    FormLoadScope &operator=(const FormLoadScope &) = delete;
    /// Whether a scope lives on this thread.
    static bool active();
};

/// While a scope lives on a thread, components created on it are being designed
/// (csDesigning from their constructor on): the Qt Designer plugin creates the library's
/// widgets inside one, so that their design-time defaults apply.
class DRIVEWIZ_EXPORT DesignScope
{
public:
    DesignScope();
    ~DesignScope();
    DesignScope(const DesignScope &) = delete;
    DesignScope &operator=(const DesignScope &) = delete;
    /// Whether a scope lives on this thread.
    static bool active();
};

/// The host's application tag. A host sets 999 to keep the parameter tables from loading
/// their descriptions and language; 0 by default.
DRIVEWIZ_EXPORT int ApplicationTag();
DRIVEWIZ_EXPORT void SetApplicationTag(int tag);

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_COMPONENT_H
