// What nearly every test of the logic begins with: the frame of the tests, a sandbox with a
// scripted user, and what that user was told.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "support/prompts.h"
#include "support/sandbox.h"
