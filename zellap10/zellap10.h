#pragma once

/// Everything that the library offers, in one include.

#include <zellap10/chart/zellap.h>
#include <zellap10/datum/shift.h>
#include <zellap10/platform/platform.h>
