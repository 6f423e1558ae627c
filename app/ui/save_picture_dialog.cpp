#include "app/ui/save_picture_dialog.h"

#include <GL/gl.h>
#include <QBuffer>
#include <QDialog>
#include <QFileDialog>
#include <QImage>
#include <QOpenGLFramebufferObject>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>

#include "app/frame.h"
#include "app/scene_picture.h"
#include "app/ui/gl_widget.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "data/ui/radio_focus.h"
#include "platform/disk.h"
#include "platform/prompts.h"
#include "ui_217_save_picture.h"

namespace mw {
namespace {

struct PictureChoice {
  PictureOf what;
  PictureSize size;
};

void ListSizes(const Ui::SavePictureForm& form, PictureOf what) {
  const int chosen = std::max(form.sizeCombo->currentIndex(), 0);
  form.sizeCombo->clear();
  for (int scale = 1; scale <= kMostPictureScale; ++scale) {
    const auto [width, height] = SizeOfPicture(what, scale);
    form.sizeCombo->addItem(QString("%1 x %2 pixels").arg(width).arg(height));
  }
  form.sizeCombo->setCurrentIndex(chosen);
}

std::optional<PictureChoice> AskWhat(QWidget* owner) {
  QDialog dialog(owner);
  Ui::SavePictureForm form;
  form.setupUi(&dialog);
  const auto what = [&form] {
    return form.levelRadio->isChecked() ? PictureOf::WholeLevel : PictureOf::View;
  };
  const bool fromAbove = editor.cameraMode == CameraMode::TopDown;
  (fromAbove ? form.levelRadio : form.viewRadio)->setChecked(true);
  ListSizes(form, what());
  QObject::connect(form.levelRadio, &QRadioButton::toggled, [&] { ListSizes(form, what()); });
  LetTabGoToCheckedRadios(dialog);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return PictureChoice{what(), SizeOfPicture(what(), form.sizeCombo->currentIndex() + 1)};
}

QString AskWhere(QWidget* owner) {
  QFileDialog dialog(owner, "Save Picture As", {}, "Pictures *.png (*.png)");
  dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::HideNameFilterDetails);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix("png");
  dialog.selectFile(QString::fromStdString(modConfig.LevelName.String()) + ".png");
  if (dialog.exec() != QDialog::Accepted) return {};
  return dialog.selectedFiles().value(0);
}

// From the current framebuffer, whose rows are counted from the bottom.
void ReadTile(const PictureTile& tile, QImage& picture) {
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  for (int row = 0; row < tile.height; ++row) {
    uchar* const line = picture.scanLine(tile.top + row) + std::ptrdiff_t{tile.left} * 3;
    glReadPixels(0, tile.height - 1 - row, tile.width, 1, GL_RGB, GL_UNSIGNED_BYTE, line);
  }
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
}

// Null when there is not enough memory, or the tiles cannot be drawn.
QImage DrawTiles(const PictureChoice& choice) {
  QImage picture(choice.size.width, choice.size.height, QImage::Format_RGB888);
  std::unique_ptr<QOpenGLFramebufferObject> target;
  for (const PictureTile& tile : TilesOfPicture(choice.what, choice.size)) {
    if (picture.isNull()) break;
    const QSize size(tile.width, tile.height);
    if (!target || target->size() != size) {
      target = std::make_unique<QOpenGLFramebufferObject>(
          size, QOpenGLFramebufferObject::CombinedDepthStencil, GL_TEXTURE_2D, GL_RGB8);
    }
    if (!target->bind()) return {};
    DrawPictureTile(choice.what, choice.size, tile);
    ReadTile(tile, picture);
  }
  return picture;
}

QImage DrawPicture(const PictureChoice& choice, GlWidget& view) {
  if (!view.MakeCurrent()) return {};
  QImage picture = DrawTiles(choice);
  view.MakeCurrent();  // with its own framebuffer
  ResizeView(static_cast<int>(editor.viewWidth), static_cast<int>(editor.viewHeight));
  return picture;
}

// Why it is not written; empty when it is.
std::string WritePicture(const QImage& picture, const std::string& path) {
  if (picture.isNull()) return "There is not enough memory for a picture of that size.";
  QBuffer png;
  if (!png.open(QIODevice::WriteOnly) || !picture.save(&png, "PNG")) {
    return "It could not be put into the PNG format.";
  }
  const QByteArray& bytes = png.data();
  std::string reason;
  const bool written =
      WriteWholeFile(path,
                     std::span(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                               static_cast<std::size_t>(bytes.size())),
                     &reason);
  return written ? std::string() : reason;
}

std::string MakePicture(const PictureChoice& choice, GlWidget& view, const std::string& path) {
  try {
    return WritePicture(DrawPicture(choice, view), path);
  } catch (const std::bad_alloc&) {
    return WritePicture({}, path);
  }
}

}  // namespace

void SavePictureDialog(QWidget* owner, GlWidget& view) {
  const auto choice = AskWhat(owner);
  if (!choice) return;
  const std::string path = AskWhere(owner).toStdString();
  if (path.empty()) return;
  ShowWaitCursor();
  SetStatusText(1, "Saving the picture...");
  const std::string reason = MakePicture(*choice, view, path);
  if (reason.empty()) {
    SetStatusText(1, FormatText("Saved picture %s", path.c_str()));
    return;
  }
  SetStatusText(1, "The picture was not saved");
  ShowPrompt("The picture could not be saved:\n\n" + path + "\n\n" + reason, "Error",
             PromptButtons::Ok, PromptIcon::Stop);
}

}  // namespace mw
