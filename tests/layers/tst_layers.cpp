// The source folders are layers: a file includes headers of its own folder and of lower
// folders only. The order is written once, in src/layers.txt.

#include "support/testing.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

struct Violation
{
    QString file; // relative to the source root
    int line = 0;
    QString include;
    QString why;
};

QStringList readLayers(const QString &root)
{
    QFile f(root + QStringLiteral("/layers.txt"));
    if (!f.open(QIODevice::ReadOnly)) return {};
    QStringList layers;
    for (const QByteArray &raw : f.readAll().split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (!line.isEmpty() && !line.startsWith(QLatin1Char('#'))) layers << line;
    }
    return layers;
}

// A header without a folder (src/ itself, generated ui_*.h) and the public C headers lie
// below every layer: rank -1.
int rankOf(const QString &folder, const QStringList &layers)
{
    if (folder.isEmpty() || folder == QLatin1String("drivewiz")) return -1;
    return int(layers.indexOf(folder));
}

QString folderOf(const QString &relativePath)
{
    const int slash = int(relativePath.indexOf(QLatin1Char('/')));
    return slash < 0 ? QString() : relativePath.left(slash);
}

void checkFile(const QString &root, const QString &relative, const QStringList &layers,
               std::vector<Violation> &out)
{
    static const QRegularExpression include(QStringLiteral(R"re(^\s*#\s*include\s*"([^"]+)")re"));
    const QString folder = folderOf(relative);
    const int own = rankOf(folder, layers);
    QFile f(root + QLatin1Char('/') + relative);
    if (!f.open(QIODevice::ReadOnly)) return;
    int lineNo = 0;
    for (const QByteArray &raw : f.readAll().split('\n')) {
        ++lineNo;
        const auto m = include.match(QString::fromUtf8(raw));
        if (!m.hasMatch()) continue;
        const QString target = m.captured(1);
        const QString targetFolder = folderOf(target);
        const int rank = rankOf(targetFolder, layers);
        if (!targetFolder.isEmpty() && rank < 0 && targetFolder != QLatin1String("drivewiz"))
            out.push_back({relative, lineNo, target, QStringLiteral("folder is no layer")});
        else if (rank > own)
            out.push_back(
                {relative, lineNo, target,
                 QStringLiteral("%1 is above %2")
                     .arg(targetFolder, folder.isEmpty() ? QStringLiteral("src/") : folder)});
    }
}

// Every include of every source file under `root`, and every folder that is not a layer.
std::vector<Violation> checkTree(const QString &root)
{
    std::vector<Violation> out;
    const QStringList layers = readLayers(root);
    if (layers.isEmpty()) {
        out.push_back({QStringLiteral("layers.txt"), 0, {}, QStringLiteral("no layers listed")});
        return out;
    }
    const QDir dir(root);
    for (const QString &sub : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (sub != QLatin1String("forms") && !layers.contains(sub))
            out.push_back({sub, 0, {}, QStringLiteral("folder is not listed in layers.txt")});
    }
    QDirIterator it(root, {QStringLiteral("*.h"), QStringLiteral("*.cpp"), QStringLiteral("*.c")},
                    QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        checkFile(root, dir.relativeFilePath(it.next()), layers, out);
    return out;
}

std::string describe(const std::vector<Violation> &violations)
{
    std::string text;
    for (const Violation &v : violations)
        text += QStringLiteral("%1:%2: includes \"%3\": %4\n")
                    .arg(v.file)
                    .arg(v.line)
                    .arg(v.include, v.why)
                    .toStdString();
    return text;
}

class LayersTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(tmp.isValid()); }
    void write(const QString &relative, const QByteArray &text)
    {
        ASSERT_TRUE(drivewiz::test::writeFile(tmp.filePath(relative), text));
    }
    QTemporaryDir tmp;
};

} // namespace

TEST(Layers, SourceTreeIncludesNothingFromAbove)
{
    const std::vector<Violation> violations = checkTree(drivewiz::test::sourcePath("src"));
    EXPECT_TRUE(violations.empty()) << describe(violations);
}

TEST_F(LayersTest, AnIncludeFromAHigherLayerIsNamedWithFileAndLine)
{
    write("layers.txt", "# bottom first\nlow\nhigh\n");
    write("low/A.h", "#pragma once\n");
    write("high/B.h", "#include \"low/A.h\"\n");
    write("low/A.cpp", "#include \"low/A.h\"\n\n  #  include \"high/B.h\"\n");
    const std::vector<Violation> v = checkTree(tmp.path());
    ASSERT_EQ(v.size(), 1u) << describe(v);
    EXPECT_EQ(v[0].file, QStringLiteral("low/A.cpp"));
    EXPECT_EQ(v[0].line, 3);
    EXPECT_EQ(v[0].include, QStringLiteral("high/B.h"));
}

TEST_F(LayersTest, RootHeadersGeneratedFormsAndPublicHeadersAreBelowEveryLayer)
{
    write("layers.txt", "low\n");
    write("global.h", "#include \"low/A.h\"\n"); // the root may not reach up either
    write("low/A.cpp",
          "#include \"global.h\"\n#include \"ui_A.h\"\n#include \"drivewiz/host_api.h\"\n"
          "#include <QWidget>\n");
    const std::vector<Violation> v = checkTree(tmp.path());
    ASSERT_EQ(v.size(), 1u) << describe(v);
    EXPECT_EQ(v[0].file, QStringLiteral("global.h"));
}

TEST_F(LayersTest, UnlistedFoldersAreReported)
{
    write("layers.txt", "low\n");
    write("low/A.cpp", "#include \"extra/X.h\"\n");
    write("extra/X.h", "\n");
    write("forms/A.ui", "<ui/>\n");
    const std::vector<Violation> v = checkTree(tmp.path());
    ASSERT_EQ(v.size(), 2u) << describe(v);
    EXPECT_EQ(v[0].file, QStringLiteral("extra")); // the folder itself
    EXPECT_EQ(v[1].include, QStringLiteral("extra/X.h"));
}
