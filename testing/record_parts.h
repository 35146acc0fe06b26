#pragma once

#include <cstddef>
#include <vector>

#include <zellap10/georef/geo_record.h>

/// The member that a line of a georeference file sets: a text or a number.
struct RecordField {
    const char* key;
    CString CGEORec::*text;
    double CGEORec::*number = nullptr;
};

// clang-format off
inline constexpr RecordField kRecordFields[] = {
    {"Bitmap",                      &CGEORec::Bitmap},
    {"Name",                        &CGEORec::Name},
    {"Scale",                       &CGEORec::Scale},
    {"Order",                       &CGEORec::Order},
    {"Id",                          &CGEORec::Id},
    {"Type",                        &CGEORec::Type},
    {"Source",                      &CGEORec::Source},
    {"Source Edition",              &CGEORec::SourceEdition},
    {"Country",                     &CGEORec::Country},
    {"Province/State",              &CGEORec::ProvinceState},
    {"Date Published",              &CGEORec::DatePublished},
    {"Last Update",                 &CGEORec::LastUpdate},
    {"Magnetic Declination Date",   &CGEORec::MagDeclinationDate},
    {"Magnetic Declination",        &CGEORec::MagDeclination},
    {"Magnetic Declination Change", &CGEORec::MagDeclinationChange},
    {"UL Latitude",                 &CGEORec::ULLatitude},
    {"UL Longitude",                &CGEORec::ULLongitude},
    {"LR Latitude",                 &CGEORec::LRLatitude},
    {"LR Longitude",                &CGEORec::LRLongitude},
    {"Depth Units",                 &CGEORec::DepthUnits},
    {"Sounding Datum",              &CGEORec::SoundingDatum},
    {"Projection",                  &CGEORec::Projection},
    {"PP",                          &CGEORec::PP},
    {"P1",                          &CGEORec::P1},
    {"P2",                          &CGEORec::P2},
    {"P3",                          &CGEORec::P3},
    {"P4",                          &CGEORec::P4},
    {"P5",                          &CGEORec::P5},
    {"P6",                          &CGEORec::P6},
    {"Resolution",                  &CGEORec::Resolution},
    {"Datum",                       &CGEORec::Datum},
    {"Skew Angle",                  nullptr, &CGEORec::SkewAngle},
    {"Latitude Offset",             nullptr, &CGEORec::LatitudeOffset},
    {"Longitude Offset",            nullptr, &CGEORec::LongitudeOffset},
};
// clang-format on

/// The elements of a list in order.
template <class Element>
std::vector<Element*> elements_of(const CList<Element*, Element*>& list) {
    return {list.begin(), list.end()};
}

/// Everything that a fit sets, as one vector: the wrap, the projection code and the two splits, then the 168
/// coefficients of the polynomials and the 84 of the affine transforms.
inline std::vector<double> transforms_of(const CGEORec& record) {
    std::vector<double> all{static_cast<double>(record.Wraps180), static_cast<double>(record.ProjCode),
                            record.pwSplit, record.wpSplit};
    const auto add = [&all](const double* from, std::size_t count) {
        all.insert(all.end(), from, from + count);
    };
    for (const auto* regions : {&record.wpxPoly, &record.wpyPoly, &record.pwxPoly, &record.pwyPoly}) {
        add((*regions)[0], 21);
        add((*regions)[1], 21);
    }
    for (const auto* affine : {&record.wpxAffine, &record.wpyAffine, &record.pwxAffine, &record.pwyAffine}) {
        add(*affine, 21);
    }
    return all;
}
