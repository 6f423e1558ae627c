#include "platform/qt/child_process.h"

#include <array>
#include <windows.h>

#include "platform/file.h"

namespace mw {

QString RunnerOf(const QString& path) {
  File file;
  std::array<std::uint8_t, 2> start{};
  if (!file.Open(path.toStdU16String(), FileAccess::Read)) return {};
  file.ReadAt(0, start);  // a shorter file leaves zeros
  return start[0] == 'M' && start[1] == 'Z' ? path : QString();
}

void LeadGroup(QProcess&) {}  // the job is made once the process is there

// A job that the process is put into as soon as it runs; what it starts from then on is in it.
struct GroupEnd::Group {
  HANDLE job = CreateJobObjectW(nullptr, nullptr);
  HANDLE leader = nullptr;

  ~Group() {
    if (leader) CloseHandle(leader);
    if (job) CloseHandle(job);
  }
};

GroupEnd::GroupEnd(qint64 leader) : group_(std::make_unique<Group>()) {
  group_->leader =
      OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, static_cast<DWORD>(leader));
  if (group_->leader && group_->job) AssignProcessToJobObject(group_->job, group_->leader);
}

GroupEnd::~GroupEnd() = default;

// A process without windows cannot be asked on Windows, and a game that loads does not listen.
void GroupEnd::Ask() {
  asked_ = true;
  if (group_->job) TerminateJobObject(group_->job, 1);
  if (group_->leader)
    TerminateProcess(group_->leader, 1);  // one that could not be put into the job
}

}  // namespace mw
