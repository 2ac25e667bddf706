// What is promised of a load whose calls fail.
#pragma once

#include "model.h"

#include <set>

namespace torture {

class LoadModel : public Model {
public:
    using Model::Model;

    /// The lines are written out whole, from the literal tables of the Java side.
    Outcome load();

private:
    void refuse(const std::string& last_line);
    void unregister(bool exception_kept);
    void resolveClasses();
    void resolveMethods();

    std::set<int> missing_classes_;
    std::set<int> missing_methods_;
    bool refusal_thrown_ = false;
};

/// Hexadecimal numbers of threads and environments are left out of a line.
std::string withoutAddresses(const std::string& line);

/// The load's answer: what it returned, the exception it left, and what works afterwards.
std::string loadAnswer(const std::string& returned, const std::string& native,
                       const std::string& event);

} // namespace torture
