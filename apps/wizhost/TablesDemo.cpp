#include "TablesDemo.h"

#include "HostSession.h"

#include "lang/wizSprache.h"
#include "paramctrls/ArrayPara.h"
#include "paramtable/ParaTable.h"
#include "platform/dialogrecorder.h"
#include "platform/dialogs.h"
#include "tables/ArrayGroups.h"
#include "tables/BusUtils.h"
#include "tables/ImportOM_CSV.h"
#include "tables/MeasurementPlot.h"
#include "widgets/HList.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace drivewiz::wizhost {

namespace {

constexpr int kTelegramBytes = 8;

template <class T> T *part(QWidget *form, const char *name)
{
    return form->findChild<T *>(QLatin1String(name));
}

// A parameter control's OnChange also runs `then` (the host may have set one before).
void alsoOnChange(TParaClass *c, const std::function<void()> &then)
{
    c->OnChange = [previous = c->OnChange, then](QObject *sender) {
        if (previous) previous(sender);
        then();
    };
}

void wireArrays(QWidget *form)
{
    auto *group = part<TArrayGroup>(form, "AgFahrsatz");
    auto *label = part<QLabel>(form, "LblElement");
    auto *crc = part<QLabel>(form, "LblCrc");
    auto *files = part<THistoryCombo>(form, "CbFiles");
    if (!group || !label || !crc || !files) return;
    const auto show = [group, label, crc] {
        label->setText(QStringLiteral("%1 / %2").arg(group->ArrayIndex() + 1).arg(group->ArrayLen()));
        crc->setText(QStringLiteral("CRC32: %1")
                         .arg(group->CalcCRC32(quint32(group->ArrayLen())), 8, 16, QLatin1Char('0'))
                         .toUpper());
    };
    QObject::connect(group, &TArrayGroup::arrayIndexChanged, form, show);
    QObject::connect(group, &TArrayGroup::arrayLengthChanged, form, show);
    const auto step = [group](int delta) { group->StepArrayIndex(delta); };
    QObject::connect(part<QPushButton>(form, "BtnElementPrev"), &QPushButton::clicked, form, [step] { step(-1); });
    QObject::connect(part<QPushButton>(form, "BtnElementNext"), &QPushButton::clicked, form, [step] { step(1); });
    QObject::connect(part<QPushButton>(form, "BtnCopyPrev"), &QPushButton::clicked, form, [group, show] {
        group->CopyRecord(group->ArrayIndex() - 1);
        show();
    });
    // Page Up and Page Down step through the elements from anywhere on the page.
    QWidget *page = part<QWidget>(form, "PageArrays");
    for (const auto &[key, delta] : {std::pair{Qt::Key_PageUp, -1}, std::pair{Qt::Key_PageDown, 1}}) {
        auto *shortcut = new QShortcut(QKeySequence(key), page);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, form, [step, delta = delta] { step(delta); });
    }
    files->SetIniFileName(HistoryFileName());
    files->SetIniSection(QStringLiteral("TablesFiles"));
    if (files->currentText().isEmpty()) files->setEditText(group->LastExportFile());
    QObject::connect(part<QPushButton>(form, "BtnExport"), &QPushButton::clicked, form, [group, files, show] {
        if (!group->ExportCSV(files->currentText(), QLatin1Char(';'), true)) return;
        files->setEditText(group->LastExportFile());
        files->UpdateList();
        show();
    });
    QObject::connect(part<QPushButton>(form, "BtnImport"), &QPushButton::clicked, form, [group, files, show] {
        QString file = files->currentText();
        if (!group->CheckDatei(file, QStringLiteral("Import..."), false) || !group->ImportCSV(file)) return;
        files->setEditText(file);
        files->UpdateList();
        show();
    });
    show();
}

void wirePdo(QWidget *form)
{
    auto *table = part<TParaTable>(form, "ParaTable");
    const struct
    {
        const char *control, *label;
    } pairs[] = {{"P_A190", "LblLenRx"}, {"P_A191", "LblLenTx"}};
    for (const auto &pair : pairs) {
        auto *c = part<TParaClass>(form, pair.control);
        QPointer<QLabel> label = part<QLabel>(form, pair.label);
        if (!c || !label) continue;
        QPointer<TParaClass> control = c;
        const auto check = [table, control, label] {
            if (control && label) CheckLength(label, table, control->GetText(), kTelegramBytes);
        };
        alsoOnChange(c, check);
        if (auto *edit = qobject_cast<QLineEdit *>(c->GetEditControl()))
            QObject::connect(edit, &QLineEdit::textEdited, form, check); // while typing
        check();
    }
}

} // namespace

QString HistoryFileName()
{
    return QDir(QFileInfo(GetCFGFileName()).absolutePath()).filePath(QStringLiteral("wizhost_history.ini"));
}

void PrepareTablesForm(QWidget *form, HostSession &session)
{
    form->setWindowTitle(wizReadString(session.languageFile(), QStringLiteral("Tables"),
                                       QStringLiteral("cWizTablesTitle"), form->windowTitle()));
    ReadControls(session.languageFile(), session.language(), QStringLiteral("Tables"), form);
    wireArrays(form);
    wirePdo(form);
}

// --- the tour -------------------------------------------------------------------------------

void TablesTourPage(QWidget *form, QWidget *page, const QString &outDir,
                    const std::function<void(const QString &)> &say)
{
    auto *recorder = dynamic_cast<DialogRecorder *>(dialogService());
    const auto settle = [] {
        for (int i = 0; i < 5; ++i)
            QApplication::processEvents();
    };
    if (page->objectName() == QLatin1String("PageArrays")) {
        auto *group = part<TArrayGroup>(form, "AgFahrsatz");
        auto *j11 = part<TArrayPara>(form, "P_J11");
        if (!group || !j11) return;
        part<QPushButton>(form, "BtnElementNext")->click();
        part<QPushButton>(form, "BtnElementNext")->click();
        say(QStringLiteral("    stepped to element %1 of %2").arg(group->ArrayIndex()).arg(group->ArrayLen()));
        auto *edit = qobject_cast<QLineEdit *>(j11->GetEditControl());
        if (edit) {
            edit->setFocus(Qt::TabFocusReason);
            edit->selectAll();
            edit->insert(QStringLiteral("1234"));
            group->StepArrayIndex(-1); // as Page Up does, while the field has the focus
            say(QStringLiteral("    typed J11.2 = 1234, stepped back to element %1").arg(group->ArrayIndex()));
        }
        settle();
        const QString file = QDir(outDir).filePath(QStringLiteral("Fahrsaetze.csv"));
        if (recorder) recorder->answer(file);
        part<QPushButton>(form, "BtnExport")->click();
        say(QStringLiteral("    exported to %1 (%2)").arg(QFileInfo(file).fileName(), part<QLabel>(form, "LblCrc")->text()));
        if (recorder) recorder->answer(file);
        part<QPushButton>(form, "BtnImport")->click();
        say(QStringLiteral("    imported it again (%1)").arg(part<QLabel>(form, "LblCrc")->text()));
        settle();
    } else if (page->objectName() == QLatin1String("PagePdo")) {
        auto *a190 = part<TParaClass>(form, "P_A190");
        auto *edit = a190 ? qobject_cast<QLineEdit *>(a190->GetEditControl()) : nullptr;
        if (!edit) return;
        edit->setFocus(Qt::TabFocusReason);
        edit->selectAll();
        edit->insert(QStringLiteral("A180,I210,E08,E02,A181"));
        Q_EMIT edit->textEdited(edit->text());
        edit->clearFocus();
        settle();
        say(QStringLiteral("    typed A190 = %1: %2").arg(edit->text(), part<QLabel>(form, "LblLenRx")->text()));
    }
}

// --- the measurement window ---------------------------------------------------------------------

MeasurementWindow::MeasurementWindow(HostSession &session, QWidget *parent)
    : QDialog(parent), m_session(session)
{
    setObjectName(QStringLiteral("MeasurementWindow"));
    setWindowTitle(text("cMeasurementTitle", "Messung"));
    // A parameter table of its own gives the channels their names, units and scaling.
    auto *table = new TParaTable(this);
    table->SetParamFileName(session.descriptionFile());
    table->ReloadCSVFile();
    m_data = new TImportOM_CSV(this);
    m_data->SetwizParaSource(table);
    m_plot = new TMeasurementPlot(this);
    m_plot->SetMeasurement(m_data);
    m_files = new THistoryCombo(this);
    m_files->setObjectName(QStringLiteral("CbMeasurementFiles"));
    m_files->SetIniFileName(HistoryFileName());
    m_files->SetIniSection(QStringLiteral("MeasurementFiles"));
    auto *record = new QPushButton(QStringLiteral("&Aufzeichnen"), this);
    record->setObjectName(QStringLiteral("BtnRecord"));
    auto *open = new QPushButton(QStringLiteral("Ö&ffnen..."), this);
    open->setObjectName(QStringLiteral("BtnOpen"));
    m_normalised = new QCheckBox(QStringLiteral("&Normiert (-1..1)"), this);
    m_normalised->setObjectName(QStringLiteral("ChkNormalised"));
    m_normalised->setChecked(m_plot->Normalised());
    m_info = new QLabel(this);
    m_info->setObjectName(QStringLiteral("LblInfo"));
    auto *bar = new QHBoxLayout;
    bar->addWidget(record);
    bar->addWidget(open);
    bar->addWidget(m_files, 1);
    bar->addWidget(m_normalised);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_plot, 1);
    layout->addWidget(m_info);
    ReadControls(session.languageFile(), session.language(), QStringLiteral("Tables"), this);
    connect(record, &QPushButton::clicked, this, &MeasurementWindow::Record);
    connect(open, &QPushButton::clicked, this, [this] {
        const QString file = dialogService()->getOpenFileName(
            text("cOpenMeasurement", "Messung öffnen"), m_files->currentText(),
            text("cMeasurementFilter", "CSV-Dateien (*.csv *.CSV);;Alle Dateien (*)"));
        if (!file.isEmpty()) Open(file);
    });
    connect(m_files, &QComboBox::textActivated, this, [this](const QString &file) { Open(file); });
    connect(m_normalised, &QCheckBox::toggled, m_plot, &TMeasurementPlot::SetNormalised);
    connect(m_plot, &TMeasurementPlot::cursorMoved, this, &MeasurementWindow::showInfo);
    resize(m_plot->sizeHint() + QSize(24, 80));
    Record();
    m_plot->setFocus();
}

MeasurementWindow::~MeasurementWindow() = default;

QString MeasurementWindow::text(const char *key, const char *german) const
{
    return wizReadString(m_session.languageFile(), QStringLiteral("Tables"), QLatin1String(key),
                         QString::fromUtf8(german));
}

bool MeasurementWindow::Record()
{
    const QString file = m_dir.filePath(text("cRecordingFile", "Aufzeichnung_%1.csv").arg(++m_recordings));
    if (!m_session.drive().writeRecording(file, {QStringLiteral("E08"), QStringLiteral("E02"),
                                                 QStringLiteral("I330"), QStringLiteral("E10")})) {
        ShowMessage(text("cRecordFailed", "Aufzeichnung nicht möglich:") + QLatin1Char(' ') + file);
        return false;
    }
    return Open(file);
}

bool MeasurementWindow::Open(const QString &fileName)
{
    if (!m_data->LoadFromFile(fileName)) return false;
    m_files->setEditText(fileName);
    m_files->UpdateList();
    showInfo();
    return true;
}

void MeasurementWindow::showInfo()
{
    m_info->setText(QStringLiteral("%1: %2 x %3   %4")
                        .arg(QFileInfo(m_data->FileName()).fileName())
                        .arg(m_data->SampleCount())
                        .arg(m_data->ChannelCount())
                        .arg(m_plot->ReadOut()));
}

} // namespace drivewiz::wizhost
