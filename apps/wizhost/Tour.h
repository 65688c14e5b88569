#ifndef DRIVEWIZ_WIZHOST_TOUR_H
#define DRIVEWIZ_WIZHOST_TOUR_H

#include "HostSession.h"

#include <QStringList>

#include <functional>

class QWidget;

namespace drivewiz {
class DialogRecorder;
class TwizParamViews;
}

namespace drivewiz::wizhost {

class HostWindow;

/// The scripted tour of `wizhost --tour <dir>`, for `make demo` without a display: it
/// opens both wizards (not modally), walks every shown page offline and online, types
/// values into fields as a user would (enter, replace the text, leave), chooses entries,
/// saves with OK, writes one picture per page into `dir` and prints what reached the
/// simulated drive. Message boxes are answered by a recorder and printed.
class Tour
{
public:
    Tour(HostSession &session, HostWindow &window, const QString &outDir);
    /// Runs the tour; 0 when every wizard opened, else 1.
    int run();

private:
    using PageAction = std::function<void(QWidget *form, QWidget *page)>;

    bool walk(Wizard which, int mode, const PageAction &action);
    void walkPages(QWidget *form, const QString &prefix, const PageAction &action);
    void shoot(QWidget *w, const QString &name);
    void type(QWidget *form, const QString &control, const QString &text);
    void choose(QWidget *form, const QString &control, int key);
    void toggleBit(QWidget *form, const QString &control, int bit);
    void pressOk(QWidget *form);
    void settle(int milliseconds = 60);
    void say(const QString &line);
    void sayMessages();
    void summary();

    void setupOffline(QWidget *form, QWidget *page);
    void setupOnline(QWidget *form, QWidget *page);
    void overviewOffline(QWidget *form, QWidget *page);
    void overviewOnline(QWidget *form, QWidget *page);
    void tourMeasurement();

    // The Inputs wizard (Tour_inputs.cpp).
    void walkInputs();
    void inputsOffline(QWidget *form, QWidget *page);
    void inputsOnline(QWidget *form, QWidget *page);
    void chooseSource(QWidget *form, const QString &input, int key);
    void tickBit(QWidget *form, const QString &bar, int bit);
    void chooseHardware(int family, int board);

    // The parameter views (Tour_sets.cpp).
    void walkSets();
    void compareDefaults(TwizParamViews *views);
    void journal(TwizParamViews *views);
    void goOnline(QWidget *form, TwizParamViews *views, int logBefore);

    // The wizard "Outputs and encoder" (Tour_outputs.cpp).
    void walkOutputs();
    void outputsOffline(QWidget *form, QWidget *page);
    void outputsOnline(QWidget *form, QWidget *page);
    void typeKeys(QWidget *scope, const QString &edit, const QString &text);
    void chooseOutputSource(QWidget *scope, const QString &control, const QString &koordinate);

    HostSession &m_session;
    HostWindow &m_window;
    QString m_outDir;
    DialogRecorder *m_recorder = nullptr;
    QStringList m_pictures;
    QStringList m_walks;
    int m_typed = 0;
    int m_chosen = 0;
    int m_messages = 0;
    int m_refused = 0;
    int m_failures = 0;
};

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_TOUR_H
