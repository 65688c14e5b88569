// Opening the demo's set-up wizard as a user does: the .ui file loaded, the table and its
// controls started up (descriptions, language, values from the simulated drive), the form
// shown and its first page painted, offscreen. The baseline is the same widget tree made
// of plain Qt widgets (same classes' Qt bases, places, texts and visibility), loaded from
// a .ui file and painted the same way.

#include "SimulatedDrive.h"
#include "bench_support.h"
#include "drivewiz/host_api.h"

#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTextEdit>
#include <QTreeWidget>
#include <QUiLoader>
#include <QXmlStreamWriter>

#include <cstring>
#include <memory>

using namespace drivewiz;

namespace {

QString sourcePath(const char *relative)
{
    return QDir(QStringLiteral(DRIVEWIZ_SOURCE_DIR)).filePath(QString::fromLatin1(relative));
}

const QByteArray &setupUi()
{
    static const QByteArray path = sourcePath("apps/wizhost/forms/DriveSetup.ui").toUtf8();
    return path;
}

const QByteArray &descriptionFile()
{
    static const QByteArray path = sourcePath("data/sample/Parameter.csv").toUtf8();
    return path;
}

// The demo host's drive and callbacks: descriptions from the file, values from the drive.
const dwz_callbacks &hostCallbacks()
{
    static sim::SimulatedDrive drive;
    static const dwz_callbacks cb = [] {
        drive.load(QString::fromUtf8(descriptionFile()));
        sim::SimulatedDrive::setCurrent(&drive);
        dwz_callbacks c = sim::SimulatedDrive::callbacks();
        c.get_para_info = nullptr;
        c.get_auswahl_info = nullptr;
        return c;
    }();
    return cb;
}

dwz_form *openSetupWizard()
{
    return dwz_form_create(setupUi().constData(), &hostCallbacks(), 1, 2, 1, DWZ_OFFLINE,
                           descriptionFile().constData());
}

// What the user sees first: the form shown and painted.
void showAndPaint(QWidget *form)
{
    form->show();
    const QPixmap picture = form->grab();
    benchmark::DoNotOptimize(picture.cacheKey());
}

// --- the same tree of plain widgets ----------------------------------------------------

const char *plainClass(const QWidget *w)
{
    if (qobject_cast<const QTabWidget *>(w)) return "QTabWidget";
    if (qobject_cast<const QTreeWidget *>(w)) return "QTreeWidget";
    if (qobject_cast<const QTextEdit *>(w)) return "QTextEdit";
    if (qobject_cast<const QComboBox *>(w)) return "QComboBox";
    if (qobject_cast<const QLineEdit *>(w)) return "QLineEdit";
    if (qobject_cast<const QLabel *>(w)) return "QLabel";
    if (qobject_cast<const QCheckBox *>(w)) return "QCheckBox";
    if (qobject_cast<const QRadioButton *>(w)) return "QRadioButton";
    if (qobject_cast<const QAbstractButton *>(w)) return "QPushButton";
    if (qobject_cast<const QGroupBox *>(w)) return "QGroupBox";
    if (qobject_cast<const QFrame *>(w)) return "QFrame";
    return "QWidget";
}

class TreeWriter
{
public:
    explicit TreeWriter(QXmlStreamWriter &xml) : m_xml(xml) {}

    void widget(const QWidget *w, const char *cls)
    {
        m_xml.writeStartElement(QStringLiteral("widget"));
        m_xml.writeAttribute(QStringLiteral("class"), QString::fromLatin1(cls));
        m_xml.writeAttribute(QStringLiteral("name"), QStringLiteral("w%1").arg(m_count++));
        properties(w);
        if (const auto *tabs = qobject_cast<const QTabWidget *>(w)) {
            for (int i = 0; i < tabs->count(); ++i) {
                m_xml.writeStartElement(QStringLiteral("widget"));
                m_xml.writeAttribute(QStringLiteral("class"), QStringLiteral("QWidget"));
                m_xml.writeAttribute(QStringLiteral("name"), QStringLiteral("page%1").arg(m_count++));
                m_xml.writeStartElement(QStringLiteral("attribute"));
                m_xml.writeAttribute(QStringLiteral("name"), QStringLiteral("title"));
                m_xml.writeTextElement(QStringLiteral("string"), tabs->tabText(i));
                m_xml.writeEndElement();
                children(tabs->widget(i));
                m_xml.writeEndElement();
            }
        } else if (!std::strcmp(cls, "QWidget") || !std::strcmp(cls, "QFrame") || !std::strcmp(cls, "QGroupBox") ||
                   !std::strcmp(cls, "QDialog")) {
            children(w); // the others make their inner widgets themselves
        }
        m_xml.writeEndElement();
    }

private:
    void children(const QWidget *w)
    {
        for (const QObject *o : w->children()) {
            const auto *child = qobject_cast<const QWidget *>(o);
            if (child && !child->isWindow()) widget(child, plainClass(child));
        }
    }

    void property(const char *name, const QString &type, const QString &value)
    {
        m_xml.writeStartElement(QStringLiteral("property"));
        m_xml.writeAttribute(QStringLiteral("name"), QString::fromLatin1(name));
        m_xml.writeTextElement(type, value);
        m_xml.writeEndElement();
    }

    void properties(const QWidget *w)
    {
        const QRect g = w->geometry();
        m_xml.writeStartElement(QStringLiteral("property"));
        m_xml.writeAttribute(QStringLiteral("name"), QStringLiteral("geometry"));
        m_xml.writeStartElement(QStringLiteral("rect"));
        m_xml.writeTextElement(QStringLiteral("x"), QString::number(g.x()));
        m_xml.writeTextElement(QStringLiteral("y"), QString::number(g.y()));
        m_xml.writeTextElement(QStringLiteral("width"), QString::number(g.width()));
        m_xml.writeTextElement(QStringLiteral("height"), QString::number(g.height()));
        m_xml.writeEndElement();
        m_xml.writeEndElement();
        if (w->isHidden()) property("visible", QStringLiteral("bool"), QStringLiteral("false"));
        if (const auto *l = qobject_cast<const QLabel *>(w))
            property("text", QStringLiteral("string"), l->text());
        else if (const auto *b = qobject_cast<const QAbstractButton *>(w))
            property("text", QStringLiteral("string"), b->text());
        else if (const auto *e = qobject_cast<const QLineEdit *>(w))
            property("text", QStringLiteral("string"), e->text());
        else if (const auto *t = qobject_cast<const QTextEdit *>(w))
            property("html", QStringLiteral("string"), t->toHtml());
        if (const auto *c = qobject_cast<const QComboBox *>(w)) {
            for (int i = 0; i < c->count(); ++i) {
                m_xml.writeStartElement(QStringLiteral("item"));
                property("text", QStringLiteral("string"), c->itemText(i));
                m_xml.writeEndElement();
            }
        }
        if (const auto *tree = qobject_cast<const QTreeWidget *>(w)) {
            for (int i = 0; i < tree->topLevelItemCount(); ++i) {
                m_xml.writeStartElement(QStringLiteral("item"));
                property("text", QStringLiteral("string"), tree->topLevelItem(i)->text(0));
                m_xml.writeEndElement();
            }
        }
    }

    QXmlStreamWriter &m_xml;
    int m_count = 0;
};

// The started-up wizard's widget tree, written as a .ui file of plain Qt widgets.
const QString &bareWidgetsUi()
{
    static const QString path = [] {
        dwz_form *form = openSetupWizard();
        auto *top = static_cast<QWidget *>(dwz_form_widget(form));
        top->show();
        QByteArray bytes;
        QXmlStreamWriter xml(&bytes);
        xml.writeStartDocument();
        xml.writeStartElement(QStringLiteral("ui"));
        xml.writeAttribute(QStringLiteral("version"), QStringLiteral("4.0"));
        TreeWriter(xml).widget(top, "QDialog");
        xml.writeEndElement();
        xml.writeEndDocument();
        dwz_form_destroy(form);
        const QString file = QDir(bench::dataDir()).filePath(QStringLiteral("DriveSetupBare.ui"));
        QFile out(file);
        out.open(QIODevice::WriteOnly | QIODevice::Truncate);
        out.write(bytes);
        return file;
    }();
    return path;
}

} // namespace

static void BM_OpenSetupWizard(benchmark::State &state)
{
    hostCallbacks();
    for (auto _ : state) {
        dwz_form *form = openSetupWizard();
        if (!form) {
            state.SkipWithError(dwz_last_error());
            break;
        }
        showAndPaint(static_cast<QWidget *>(dwz_form_widget(form)));
        state.PauseTiming();
        dwz_form_destroy(form);
        state.ResumeTiming();
    }
}
BENCHMARK(BM_OpenSetupWizard)->Unit(benchmark::kMillisecond);

static void BM_SetupWizardBareWidgets(benchmark::State &state)
{
    const QString path = bareWidgetsUi();
    QUiLoader loader;
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        std::unique_ptr<QWidget> form(loader.load(&file));
        showAndPaint(form.get());
        state.PauseTiming();
        form.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_SetupWizardBareWidgets)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return drivewiz::bench::runBenchmarks(argc, argv, true);
}
