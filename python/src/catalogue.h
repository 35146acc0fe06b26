#pragma once

#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

#include <pybind11/pybind11.h>

#include <zellap10/plotter/catalogue.h>

/// @file
///
/// A catalogue that threads and quilts may share.

namespace zellap10::python {

class SharedCatalogue {
public:
    /// Calls `function(Catalogue&)` while the interpreter is free for other threads and none adds charts.
    template <class Function>
    auto call(const Function& function) {
        const pybind11::gil_scoped_release free;
        const std::lock_guard<std::mutex> lock(calling_);
        return function(*charts_);
    }

    /// Throws std::invalid_argument, a ValueError in Python, if an object draws the catalogue.
    int add(const std::string& path, bool folder) {
        return call([&](plotter::Catalogue& charts) {
            if (drawn_)
                throw std::invalid_argument("a quilt draws this catalogue: nothing may be added to it");
            return folder ? charts.add_folder(path).added : static_cast<int>(charts.add_file(path));
        });
    }

    /// An object that draws the catalogue.
    template <class Drawer, class... Arguments>
    static std::unique_ptr<Drawer> drawer(SharedCatalogue& self, const Arguments&... arguments) {
        return self.call([&](const plotter::Catalogue&) {
            auto made = std::make_unique<Drawer>(self.charts_, arguments...);
            self.drawn_ = true;
            return made;
        });
    }

private:
    std::shared_ptr<plotter::Catalogue> charts_ = std::make_shared<plotter::Catalogue>();
    std::mutex calling_;
    bool drawn_ = false;
};

}  // namespace zellap10::python
