#include "platform/qt/child_process.h"

#include <QStandardPaths>
#include <QTimer>
#include <array>
#include <csignal>
#include <unistd.h>

#include "platform/file.h"

namespace mw {
namespace {

constexpr int kPatience = 2000;  // milliseconds

}  // namespace

// By the first bytes of the file: an ELF program, a script that names its interpreter, or a program
// for Windows, which Wine runs.
QString RunnerOf(const QString& path) {
  File file;
  std::array<std::uint8_t, 4> start{};
  if (!file.Open(path.toStdString(), FileAccess::Read)) return {};
  file.ReadAt(0, start);  // a shorter file leaves zeros
  if (start[0] == 0x7F && start[1] == 'E' && start[2] == 'L' && start[3] == 'F') return path;
  if (start[0] == '#' && start[1] == '!') return path;
  if (start[0] == 'M' && start[1] == 'Z') return QStandardPaths::findExecutable("wine");
  return {};
}

void LeadGroup(QProcess& process) {
  process.setChildProcessModifier([] { setpgid(0, 0); });
}

struct GroupEnd::Group {
  pid_t number;
  QTimer insist;

  void Send(int signal) const {
    if (number > 0) kill(-number, signal);  // 0 would be this program's own group
  }
};

GroupEnd::GroupEnd(qint64 leader) : group_(std::make_unique<Group>()) {
  group_->number = static_cast<pid_t>(leader);
  group_->insist.setSingleShot(true);
  QObject::connect(&group_->insist, &QTimer::timeout, [this] { group_->Send(SIGKILL); });
}

GroupEnd::~GroupEnd() {
  if (asked_) group_->Send(SIGKILL);
}

void GroupEnd::Ask() {
  asked_ = true;
  group_->Send(SIGTERM);
  group_->insist.start(kPatience);
}

}  // namespace mw
