#pragma once

#include <cstddef>
#include <vector>

#include <zellap10/georef/geo_record.h>

/// What fuzz targets and tests look at in a record.
namespace fuzz {

/// The elements of a list, from its head.
template <class Element>
std::vector<Element*> elements_of(const CList<Element*, Element*>& list) {
    return {list.begin(), list.end()};
}

/// All that a fit sets, in one row of numbers: four that are no coefficients, the polynomials' 168 and the
/// affine ones' 84.
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

}  // namespace fuzz
