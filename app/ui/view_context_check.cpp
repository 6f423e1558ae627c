#include "app/ui/view_context_check.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>

#include "app/ui/view_widget.h"
#include "platform/prompts.h"

namespace mw {
namespace {

bool Require(bool succeeded, const char* message) {
  if (!succeeded) ShowPrompt(message, "ERROR", PromptButtons::Ok, PromptIcon::Exclamation);
  return succeeded;
}

}  // namespace

bool CheckViewContext() {
  const QSurfaceFormat wanted = ViewWidget::ContextFormat();
  QOffscreenSurface surface;
  surface.setFormat(wanted);
  surface.create();
  QOpenGLContext context;
  context.setFormat(wanted);
  const bool created = context.create();
  const QSurfaceFormat got = context.format();
  // All steps are tried, so that the user learns of each.
  bool usable = Require(surface.isValid(), "Can't Create A GL Device Context.");
  usable &= Require(!created || got.renderableType() != QSurfaceFormat::OpenGLES,
                    "Can't Find A Suitable PixelFormat.");
  usable &= Require(!created || got.depthBufferSize() >= wanted.depthBufferSize(),
                    "Can't Set The PixelFormat.");
  usable &= Require(!created || got.version() >= qMakePair(1, 5),
                    "Mapwright needs OpenGL 1.5, and this computer's graphics driver has less.");
  usable &= Require(created, "Can't Create A GL Rendering Context.");
  const bool active = created && context.makeCurrent(&surface);
  usable &= Require(active, "Can't Activate The GL Rendering Context.");
  usable &= Require(!active || QOpenGLFramebufferObject::hasOpenGLFramebufferBlit(),
                    "Mapwright needs OpenGL 3.0 or the extension GL_EXT_framebuffer_blit, and this "
                    "computer's graphics driver has neither.");
  context.doneCurrent();
  return usable;
}

}  // namespace mw
