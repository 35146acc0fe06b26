#pragma once

/// @file
///
/// Everything that the library offers, in one include.

#include <zellap10/chart/zellap.h>
#include <zellap10/datum/shift.h>
#include <zellap10/georef/geo_record.h>
#include <zellap10/georef/ref_point.h>
#include <zellap10/navigation/course.h>
#include <zellap10/navigation/dead_reckoning.h>
#include <zellap10/platform/platform.h>
#include <zellap10/projection/lambert.h>
#include <zellap10/projection/mercator.h>
#include <zellap10/projection/polyconic.h>
#include <zellap10/projection/projection.h>
#include <zellap10/projection/transverse_mercator.h>
