#pragma once
// The sound fakes live with the other shared test helpers.
#include "../support/FakeSoundPlayer.h"
