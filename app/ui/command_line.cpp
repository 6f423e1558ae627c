#include "app/ui/command_line.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <cstdio>
#include <cstdlib>

#include "core/editor_state.h"
#include "data/mods.h"

namespace mw {
namespace {

constexpr int kWrongUsage = 2, kNoDisplay = 1;
// From the folder of the installed program.
constexpr const char* kSharedFolder = "../../share/mapwright";

int Complain(const QString& what) {
  std::fprintf(stderr, "mapwright: %s\n", qPrintable(what));
  return kWrongUsage;
}

// The user's own working folder, made when it is not there.
std::optional<QString> UsersFolder() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const QString folder = data + QStringLiteral("/mapwright");
  if (!data.isEmpty() && QDir().mkpath(folder)) return folder;
  Complain(QStringLiteral("The folder %1 cannot be made.").arg(folder));
  return std::nullopt;
}

// The one file that is to be opened, if there is one.
std::optional<int> ReadLevel(const QStringList& words, QString& level) {
  if (words.isEmpty()) return std::nullopt;
  if (words.size() > 1) {
    return Complain(
        QStringLiteral("One level can be opened at a time; '%1' is too much.").arg(words[1]));
  }
  const QFileInfo file(words[0]);
  if (!file.exists()) return Complain(QStringLiteral("There is no file '%1'.").arg(words[0]));
  if (file.isDir()) {
    return Complain(QStringLiteral("'%1' is a folder, not a level.").arg(words[0]));
  }
  level = file.absoluteFilePath();
  return std::nullopt;
}

// The end says it all: what the platform says before it is left out.
void EndOnFatal(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) {
    std::fputs("mapwright: There is no display to show the editor on.\n", stderr);
    std::_Exit(kNoDisplay);
  }
  if (!QByteArray(context.category).startsWith("qt.qpa")) {
    std::fprintf(stderr, "%s\n", qPrintable(text));
  }
}

}  // namespace

std::optional<int> ReadCommandLine(int argc, char** argv, CommandLine& line) {
  const QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("mapwright"));
  QCoreApplication::setApplicationVersion(QStringLiteral(MAPWRIGHT_VERSION));
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Level editor for the game Varnhold."));
  const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                QStringLiteral("Show the options and end."));
  const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                   QStringLiteral("Show the version and end."));
  const QCommandLineOption folder(QStringLiteral("folder"), QStringLiteral("Work in this folder."),
                                  QStringLiteral("DIR"));
  parser.addOptions({help, version, folder});
  parser.addPositionalArgument(QStringLiteral("LEVEL.vra"), QStringLiteral("Open this level."),
                               QStringLiteral("[LEVEL.vra]"));
  if (!parser.parse(QCoreApplication::arguments())) return Complain(parser.errorText());
  if (parser.isSet(help)) return std::fputs(qPrintable(parser.helpText()), stdout) < 0;
  if (parser.isSet(version)) return std::puts("mapwright " MAPWRIGHT_VERSION) < 0;
  if (parser.isSet(folder)) {
    line.folder = parser.value(folder);
    if (!QFileInfo(line.folder).isDir()) {
      return Complain(QStringLiteral("There is no folder '%1'.").arg(line.folder));
    }
  }
  return ReadLevel(parser.positionalArguments(), line.level);
}

bool EnterWorkingFolder(const CommandLine& line) {
  const QDir own = QCoreApplication::applicationDirPath();
  const QString holds = QString::fromUtf8(kModTemplateFile.data(), kModTemplateFile.size());
  const bool isPortable = own.exists(holds);
  const QDir shared = isPortable ? own : QDir(own.filePath(QLatin1String(kSharedFolder)));
  if (shared.exists()) editor.sharedFolder = shared.canonicalPath().toStdString();
  std::optional<QString> folder = line.folder;
  if (line.folder.isEmpty()) {
    if (QFileInfo::exists(holds)) return true;
    folder = isPortable && QTemporaryFile(own.filePath(QStringLiteral("XXXXXX.new"))).open()
                 ? own.path()
                 : UsersFolder();
  }
  if (folder && QDir::setCurrent(*folder)) return true;
  if (folder) Complain(QStringLiteral("The folder %1 cannot be entered.").arg(*folder));
  return false;
}

DisplayWatch::DisplayWatch() { qInstallMessageHandler(EndOnFatal); }

DisplayWatch::~DisplayWatch() { qInstallMessageHandler(nullptr); }

}  // namespace mw
