#include "platform/modules.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <memory>
#include <utility>

namespace mw {

Module::Module(Module&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

Module& Module::operator=(Module&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

Module::~Module() { Unload(); }

bool Module::Load(std::string_view fileName) {
  Unload();
  const QString name = QString::fromUtf8(fileName.data(), static_cast<qsizetype>(fileName.size()));
  const QString path = QDir(QCoreApplication::applicationDirPath()).filePath(name);
  if (!QFileInfo(path).isFile()) return false;
  auto library = std::make_unique<QLibrary>(path);
  if (!library->load()) return false;
  handle_ = library.release();
  return true;
}

void Module::Unload() {
  const std::unique_ptr<QLibrary> library(static_cast<QLibrary*>(std::exchange(handle_, nullptr)));
  if (library) library->unload();
}

void* Module::Function(const char* name) const {
  return handle_ ? reinterpret_cast<void*>(static_cast<QLibrary*>(handle_)->resolve(name))
                 : nullptr;
}

}  // namespace mw
