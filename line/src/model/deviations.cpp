// SPDX-License-Identifier: Apache-2.0
#include "model/deviations.hpp"

namespace wivex::line {

std::vector<Deviation> deviations(const std::map<std::string, MeasureSums>& groups,
                                  const std::vector<bool>& more_is_better) {
    std::vector<Deviation> rows;
    std::vector<double> chances;
    for (std::size_t measure = 0; measure < more_is_better.size(); ++measure) {
        Sums all;
        for (const auto& [name, sums] : groups) {
            all.add(sums.at(measure));
        }
        for (const auto& [name, sums] : groups) {
            const Sums& part = sums.at(measure);
            if (part.count == 0) {
                continue;
            }
            const Sums rest = without(all, part);
            const double chance = more_is_better.at(measure) ? chance_of_less(part, rest)
                                                             : chance_of_less(rest, part);
            rows.push_back({name, measure, part, chance, false});
            chances.push_back(chance);
        }
    }
    const std::vector<bool> marks = stands(chances);
    for (std::size_t i = 0; i < marks.size(); ++i) {
        rows[i].marked = marks[i];
    }
    return rows;
}

} // namespace wivex::line
