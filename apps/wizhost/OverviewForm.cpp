#include "OverviewForm.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/para_import_werte.h"

#include <QFile>
#include <QRect>
#include <QScrollArea>
#include <QXmlStreamWriter>

namespace drivewiz::wizhost {

namespace {

// The overview shares the set-up wizard's frame: tree left, pages right, the back button
// in the pages' bottom strip, the help view below.
constexpr QRect kTree(10, 10, 190, 440);
constexpr QRect kPages(210, 10, 560, 440);
constexpr QRect kBack(370, 395, 75, 25);
constexpr QRect kHelp(10, 460, 760, 90);
constexpr QRect kScroll(6, 36, 540, 330);
constexpr int kRowHeight = 50;

class UiWriter
{
public:
    explicit UiWriter(QIODevice *device) : x(device) { x.setAutoFormatting(true); }

    void geometry(const QRect &r)
    {
        x.writeStartElement(QStringLiteral("property"));
        x.writeAttribute(QStringLiteral("name"), QStringLiteral("geometry"));
        x.writeStartElement(QStringLiteral("rect"));
        x.writeTextElement(QStringLiteral("x"), QString::number(r.x()));
        x.writeTextElement(QStringLiteral("y"), QString::number(r.y()));
        x.writeTextElement(QStringLiteral("width"), QString::number(r.width()));
        x.writeTextElement(QStringLiteral("height"), QString::number(r.height()));
        x.writeEndElement();
        x.writeEndElement();
    }
    // The library's own properties are set by name, never translated.
    void own(const QString &name, const QString &value)
    {
        property(name, QStringLiteral("string"), value, true);
    }
    void property(const QString &name, const QString &type, const QString &value,
                  bool library = false)
    {
        x.writeStartElement(QStringLiteral("property"));
        x.writeAttribute(QStringLiteral("name"), name);
        if (library) x.writeAttribute(QStringLiteral("stdset"), QStringLiteral("0"));
        x.writeStartElement(type);
        if (type == QLatin1String("string"))
            x.writeAttribute(QStringLiteral("notr"), QStringLiteral("true"));
        x.writeCharacters(value);
        x.writeEndElement();
        x.writeEndElement();
    }
    void begin(const QString &cls, const QString &name, const QRect &r)
    {
        x.writeStartElement(QStringLiteral("widget"));
        x.writeAttribute(QStringLiteral("class"), cls);
        x.writeAttribute(QStringLiteral("name"), name);
        if (!r.isNull()) geometry(r);
    }
    void end() { x.writeEndElement(); }
    void customWidget(const QString &cls, const QString &base, const QString &header)
    {
        x.writeStartElement(QStringLiteral("customwidget"));
        x.writeTextElement(QStringLiteral("class"), cls);
        x.writeTextElement(QStringLiteral("extends"), base);
        x.writeTextElement(QStringLiteral("header"), header);
        x.writeEndElement();
    }

    QXmlStreamWriter x;
};

struct Group
{
    QString letter;
    QString title;
    QStringList koordinaten;
};

// The parameters of axis 1 and the drive-wide ones, as the wizard's table shows them.
std::vector<Group> readGroups(TWerteTable &werte, int userLevel)
{
    werte.SetLevelFilter(userLevel);
    werte.SetShowElements(false);
    werte.OnFilterRecord = [&werte](int position, bool &accepted) {
        const QString axis = werte.orgValueByColName(position, QStringLiteral("Achse")).trimmed();
        accepted = axis.isEmpty() || axis == QLatin1String("0") || axis == QLatin1String("1");
    };
    std::vector<Group> groups;
    const int count = werte.GetAnzGruppen();
    for (int g = 0; g < count; ++g) {
        Group group{werte.GetGruppe(g), QString(), {}};
        werte.SetGroupFilter(group.letter);
        const int n = werte.GetVisibleParamCount();
        for (int i = 0; i < n; ++i)
            group.koordinaten << werte.Koordinate(i).trimmed();
        const QString title = werte.ValueByColName(0, QStringLiteral("Gruppe")).trimmed();
        group.title =
            group.letter + QStringLiteral(": ") + (title.isEmpty() ? group.letter : title);
        if (n > 0) groups.push_back(group);
    }
    return groups;
}

void writePage(UiWriter &w, const Group &group)
{
    w.begin(QStringLiteral("QWidget"), QStringLiteral("Group_") + group.letter, QRect());
    w.property(QStringLiteral("Tag"), QStringLiteral("number"), QStringLiteral("0"), true);
    w.x.writeStartElement(QStringLiteral("attribute"));
    w.x.writeAttribute(QStringLiteral("name"), QStringLiteral("title"));
    w.x.writeTextElement(QStringLiteral("string"), group.title);
    w.x.writeEndElement();
    w.begin(QStringLiteral("QScrollArea"), QStringLiteral("Scroll_") + group.letter, kScroll);
    w.property(QStringLiteral("widgetResizable"), QStringLiteral("bool"), QStringLiteral("false"));
    const int rows = int(group.koordinaten.size());
    w.begin(QStringLiteral("QWidget"), QStringLiteral("Content_") + group.letter,
            QRect(0, 0, kScroll.width() - 20, rows * kRowHeight + 8));
    for (int i = 0; i < rows; ++i) {
        const QString koord = group.koordinaten.at(i);
        w.begin(QStringLiteral("TParaClass"),
                QStringLiteral("P_") + QString(koord).replace(QLatin1Char('.'), QLatin1Char('_')),
                QRect(4, 4 + i * kRowHeight, kScroll.width() - 30, 45));
        w.own(QStringLiteral("wizParaSource"), QStringLiteral("ParaTable"));
        w.own(QStringLiteral("wizKoordinate"), koord);
        w.property(QStringLiteral("wizControlWidth"), QStringLiteral("number"),
                   QStringLiteral("220"), true);
        w.end();
    }
    w.end();
    w.end();
    w.end();
}

void writeFrame(UiWriter &w, const std::vector<Group> &groups)
{
    w.begin(QStringLiteral("TParaTable"), QStringLiteral("ParaTable"), QRect(700, 530, 60, 20));
    w.own(QStringLiteral("RichEditCtrl"), QStringLiteral("HelpView"));
    w.own(QStringLiteral("wizIdString"), QStringLiteral("ParameterOverview"));
    w.end();
    w.begin(QStringLiteral("TwizTreeView"), QStringLiteral("TreeView"), kTree);
    w.property(QStringLiteral("headerHidden"), QStringLiteral("bool"), QStringLiteral("true"));
    w.own(QStringLiteral("wizPageControl"), QStringLiteral("PageControl"));
    w.end();
    w.begin(QStringLiteral("TwizPageControl"), QStringLiteral("PageControl"), kPages);
    w.property(QStringLiteral("tabPosition"), QStringLiteral("enum"),
               QStringLiteral("QTabWidget::South"));
    w.own(QStringLiteral("wizParaSource"), QStringLiteral("ParaTable"));
    w.own(QStringLiteral("wizTreeView"), QStringLiteral("TreeView"));
    w.own(QStringLiteral("wizBtnBack"), QStringLiteral("BtnBack"));
    w.property(QStringLiteral("wizTitleLeft"), QStringLiteral("number"), QStringLiteral("10"),
               true);
    w.property(QStringLiteral("wizTitleTop"), QStringLiteral("number"), QStringLiteral("6"), true);
    for (const Group &g : groups)
        writePage(w, g);
    w.end();
    w.begin(QStringLiteral("QPushButton"), QStringLiteral("BtnBack"), kBack);
    w.property(QStringLiteral("text"), QStringLiteral("string"), QStringLiteral("< ") + s_Back);
    w.end();
    w.begin(QStringLiteral("QTextEdit"), QStringLiteral("HelpView"), kHelp);
    w.property(QStringLiteral("readOnly"), QStringLiteral("bool"), QStringLiteral("true"));
    w.end();
}

} // namespace

int WriteOverviewForm(const QString &descriptionFile, int userLevel, const QString &uiFile,
                      QString &error)
{
    TWerteTable werte;
    if (!werte.ImportTable(descriptionFile)) {
        error = QStringLiteral("cannot read %1").arg(descriptionFile);
        return -1;
    }
    const std::vector<Group> groups = readGroups(werte, userLevel);
    QFile file(uiFile);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        error = QStringLiteral("cannot write %1: %2").arg(uiFile, file.errorString());
        return -1;
    }
    UiWriter w(&file);
    w.x.writeStartDocument();
    w.x.writeStartElement(QStringLiteral("ui"));
    w.x.writeAttribute(QStringLiteral("version"), QStringLiteral("4.0"));
    w.x.writeTextElement(QStringLiteral("class"), QStringLiteral("ParameterOverview"));
    w.begin(QStringLiteral("QDialog"), QStringLiteral("ParameterOverview"), QRect(0, 0, 780, 560));
    writeFrame(w, groups);
    w.end();
    w.x.writeStartElement(QStringLiteral("customwidgets"));
    w.customWidget(QStringLiteral("TParaTable"), QStringLiteral("QWidget"),
                   QStringLiteral("paramtable/ParaTable.h"));
    w.customWidget(QStringLiteral("TParaClass"), QStringLiteral("QFrame"),
                   QStringLiteral("paramctrls/ParamCtrls.h"));
    w.customWidget(QStringLiteral("TwizPageControl"), QStringLiteral("QTabWidget"),
                   QStringLiteral("wizard/wizPageControl.h"));
    w.customWidget(QStringLiteral("TwizTreeView"), QStringLiteral("QTreeWidget"),
                   QStringLiteral("wizard/wizPageControl.h"));
    w.x.writeEndElement();
    w.x.writeEndElement();
    w.x.writeEndDocument();
    if (!file.flush() || file.error() != QFileDevice::NoError) {
        error = QStringLiteral("cannot write %1: %2").arg(uiFile, file.errorString());
        return -1;
    }
    return int(groups.size());
}

void ArrangeOverviewForm(QWidget *form)
{
    for (QScrollArea *area : form->findChildren<QScrollArea *>()) {
        QWidget *content = area->widget();
        if (!content) continue;
        int y = 4;
        for (QObject *child : content->children()) {
            auto *c = qobject_cast<TParaClass *>(child);
            if (!c || c->isHidden()) continue;
            c->move(4, y);
            y += c->height() + 4;
        }
        content->resize(content->width(), y + 4);
    }
}

} // namespace drivewiz::wizhost
