#include "host/wizFormLoader.h"

#include "ioframes/AE.h"
#include "ioframes/AllInputViewer.h"
#include "ioframes/AnalogAusgang.h"
#include "ioframes/BE.h"
#include "ioframes/BitLeiste.h"
#include "ioframes/DigitalAusgang.h"
#include "ioframes/HEncoder.h"
#include "ioframes/QuellSelectIntro.h"
#include "ioframes/SystemBEs.h"
#include "paramctrls/ArrayPara.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/component.h"
#include "tables/ArrayGroups.h"
#include "tables/ImportOM_CSV.h"
#include "tables/MeasurementPlot.h"
#include "widgets/HList.h"
#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"
#include "wizard/wizPageControl.h"

#include <QFile>
#include <QPointer>

#include <functional>
#include <map>

namespace drivewiz {

namespace {

using Factory = std::function<QWidget *(QWidget *)>;

const std::map<QString, Factory> &factories()
{
    static const std::map<QString, Factory> map = {
        {QStringLiteral("TParaTable"), [](QWidget *p) { return new TParaTable(p); }},
        {QStringLiteral("TParaClass"), [](QWidget *p) { return new TParaClass(p); }},
        {QStringLiteral("TwizEdit"), [](QWidget *p) { return new TwizEdit(p); }},
        {QStringLiteral("TwizComboBox"), [](QWidget *p) { return new TwizComboBox(p); }},
        {QStringLiteral("TwizLabel"), [](QWidget *p) { return new TwizLabel(p); }},
        {QStringLiteral("TwizButton"), [](QWidget *p) { return new TwizButton(p); }},
        {QStringLiteral("TMyRadioGroup"), [](QWidget *p) { return new TMyRadioGroup(p); }},
        {QStringLiteral("TwizPageControl"), [](QWidget *p) { return new TwizPageControl(p); }},
        {QStringLiteral("TwizTreeView"), [](QWidget *p) { return new TwizTreeView(p); }},
        // the input frames
        {QStringLiteral("TBitLeiste"), [](QWidget *p) { return new TBitLeiste(p); }},
        {QStringLiteral("TInput"), [](QWidget *p) { return new TInput(p); }},
        {QStringLiteral("TBEinput"), [](QWidget *p) { return new TBEinput(p); }},
        {QStringLiteral("TAEinput"), [](QWidget *p) { return new TAEinput(p); }},
        {QStringLiteral("TAnalogEin"), [](QWidget *p) { return new TAnalogEin(p); }},
        {QStringLiteral("TSystemBEsFrame"), [](QWidget *p) { return new TSystemBEsFrame(p); }},
        {QStringLiteral("TAllInputViewer"), [](QWidget *p) { return new TAllInputViewer(p); }},
        {QStringLiteral("TQuellSelektorIntro"),
         [](QWidget *p) { return new TQuellSelektorIntro(p); }},
        // the output frames
        {QStringLiteral("TAnalogAus"), [](QWidget *p) { return new TAnalogAus(p); }},
        {QStringLiteral("TDigitalAus"), [](QWidget *p) { return new TDigitalAus(p); }},
        {QStringLiteral("TEncoderFrame"), [](QWidget *p) { return new TEncoderFrame(p); }},
        // tables and files
        {QStringLiteral("TArrayGroup"), [](QWidget *p) { return new TArrayGroup(p); }},
        {QStringLiteral("TArrayPara"), [](QWidget *p) { return new TArrayPara(p); }},
        {QStringLiteral("THistoryCombo"), [](QWidget *p) { return new THistoryCombo(p); }},
        {QStringLiteral("TImportOM_CSV"), [](QWidget *p) { return new TImportOM_CSV(p); }},
        {QStringLiteral("TMeasurementPlot"), [](QWidget *p) { return new TMeasurementPlot(p); }},
    };
    return map;
}

} // namespace

TwizFormLoader::TwizFormLoader(QObject *parent) : QUiLoader(parent) {}

QStringList TwizFormLoader::libraryClasses()
{
    QStringList names;
    for (const auto &entry : factories())
        names << entry.first;
    return names;
}

// Start-up order: tables before the controls that look values up in them, controls
// before the page controls, trees and frames that arrange them (page controls and trees
// find each other in either order). Of the input frames, bit bars come first (inputs show
// their rows), then frames that hold inputs, then the inputs, then the overview of them.
int TwizFormLoader::StartupRank(const QWidget *w)
{
    if (qobject_cast<const TParaTable *>(w)) return 0;
    if (qobject_cast<const TParaClass *>(w)) return 1;
    if (qobject_cast<const TAnalogEin *>(w) || qobject_cast<const TSystemBEsFrame *>(w) ||
        qobject_cast<const TQuellSelektorIntro *>(w))
        return 3;
    if (qobject_cast<const TInput *>(w)) return 4;
    if (qobject_cast<const TAllInputViewer *>(w)) return 5;
    return 2;
}

QWidget *TwizFormLoader::createWidget(const QString &className, QWidget *parent,
                                      const QString &name)
{
    QString bare = className;
    bare.remove(QStringLiteral("drivewiz::"));
    const auto it = factories().find(bare);
    if (it == factories().end()) return QUiLoader::createWidget(className, parent, name);
    QWidget *w = it->second(parent);
    w->setObjectName(name);
    return w;
}

QWidget *TwizFormLoader::loadForm(const QString &fileName, QWidget *parent)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return nullptr;
    QWidget *form = nullptr;
    {
        FormLoadScope scope;
        form = load(&file, parent);
    }
    if (form) CallLoaded(form);
    return form;
}

void TwizFormLoader::CallLoaded(QWidget *form)
{
    if (!form) return;
    QList<QWidget *> widgets = form->findChildren<QWidget *>();
    widgets.prepend(form);
    std::stable_sort(widgets.begin(), widgets.end(),
                     [](QWidget *a, QWidget *b) { return StartupRank(a) < StartupRank(b); });
    // A component's Loaded() may delete widgets further down the list (rebuilt inputs,
    // page buttons), so each is checked before its turn.
    const QList<QPointer<QWidget>> guarded(widgets.begin(), widgets.end());
    for (const QPointer<QWidget> &w : guarded) {
        if (auto *component = w ? dynamic_cast<Component *>(w.data()) : nullptr)
            component->Loaded();
    }
}

} // namespace drivewiz
