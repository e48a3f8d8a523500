// SPDX-License-Identifier: Apache-2.0
// Draws what "endurance" printed: memory, descriptors and processor time over the iterations.
//
//     endurance_plot < endurance.txt > endurance.svg

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr double width = 760;
constexpr double left = 70;
constexpr double right = 660;
constexpr double panel_height = 130;
constexpr double panel_distance = 185;
constexpr double first_top = 45;
constexpr std::size_t panel_count = 3;

struct Point {
    double iteration = 0;
    std::array<double, panel_count> values{};
};

using Curves = std::map<char, std::vector<Point>>;

constexpr std::array<const char*, panel_count> titles{
    "resident memory, MB", "descriptors, most that were open",
    "processor time of an iteration, ms: the tool, and dotted its children too"};

const std::map<char, const char*> colours{
    {'w', "#1b6ca8"}, {'c', "#c2571a"}, {'d', "#2f7d32"}, {'S', "#7b3f98"}};

// The tool alone in the third panel; what its children add is drawn from `with_children`.
struct Data {
    Curves curves;
    std::map<char, std::vector<double>> with_children;
};

Data read_data(std::istream& in) {
    Data data;
    std::map<char, double> last_iteration;
    for (std::string line; std::getline(in, line);) {
        std::istringstream fields(line);
        char mode = 0;
        Point point;
        double tool_ms = 0;
        double children_ms = 0;
        if (!(fields >> mode >> point.iteration >> point.values[0] >> point.values[1] >> tool_ms >>
              children_ms) ||
            !colours.contains(mode)) {
            continue;
        }
        const double iterations =
            point.iteration - std::exchange(last_iteration[mode], point.iteration);
        point.values[0] /= 1024;
        point.values[2] = tool_ms / iterations;
        data.curves[mode].push_back(point);
        data.with_children[mode].push_back((tool_ms + children_ms) / iterations);
    }
    return data;
}

// The next of 1, 2, 5, 10, 20, ... at or above `value`.
double round_up(double value) {
    const double power = std::pow(10, std::floor(std::log10(value)));
    for (const double step : {1.0, 2.0, 5.0}) {
        if (value <= step * power) {
            return step * power;
        }
    }
    return 10 * power;
}

double last_iteration(const Data& data) {
    double last = 1;
    for (const auto& [mode, curve] : data.curves) {
        last = std::max(last, curve.back().iteration);
    }
    return last;
}

double highest_value(const Data& data, std::size_t panel) {
    double highest = 0;
    for (const auto& [mode, curve] : data.curves) {
        for (const Point& point : curve) {
            highest = std::max(highest, point.values.at(panel));
        }
    }
    if (panel + 1 == panel_count) {
        for (const auto& [mode, values] : data.with_children) {
            highest = std::max(highest, *std::max_element(values.begin(), values.end()));
        }
    }
    return round_up(highest);
}

struct Scale {
    double top;
    double highest;
    double last;

    double x(double iteration) const {
        return left + (right - left) * iteration / last;
    }
    double y(double value) const {
        return top + panel_height * (1 - value / highest);
    }
};

void draw_text(double x, double y, const char* anchor, const std::string& text) {
    std::printf("<text x=\"%.0f\" y=\"%.0f\" text-anchor=\"%s\">%s</text>\n", x, y, anchor,
                text.c_str());
}

std::string number(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
}

void draw_frame(const Scale& scale, const char* title) {
    constexpr int steps = 5;
    draw_text(left, scale.top - 10, "start", title);
    for (int step = 0; step <= steps; ++step) {
        const double value = scale.highest * step / steps;
        std::printf("<line x1=\"%.0f\" x2=\"%.0f\" y1=\"%.1f\" y2=\"%.1f\" stroke=\"#ddd\"/>\n",
                    left, right, scale.y(value), scale.y(value));
        draw_text(left - 8, scale.y(value) + 4, "end", number(value));
        const double iteration = scale.last * step / steps;
        draw_text(scale.x(iteration), scale.top + panel_height + 18, "middle", number(iteration));
    }
}

void draw_curve(const Scale& scale, const std::vector<std::pair<double, double>>& points,
                const char* colour, const char* style) {
    std::printf("<polyline fill=\"none\" stroke=\"%s\" stroke-width=\"1.8\" %s points=\"", colour,
                style);
    for (const auto& [iteration, value] : points) {
        std::printf("%.1f,%.1f ", scale.x(iteration), scale.y(value));
    }
    std::printf("\"/>\n");
}

void draw_panel(const Data& data, std::size_t panel) {
    const Scale scale{first_top + panel_distance * static_cast<double>(panel),
                      highest_value(data, panel), last_iteration(data)};
    draw_frame(scale, titles.at(panel));
    for (const auto& [mode, curve] : data.curves) {
        std::vector<std::pair<double, double>> points;
        std::vector<std::pair<double, double>> with_children;
        for (std::size_t index = 0; index < curve.size(); ++index) {
            points.emplace_back(curve[index].iteration, curve[index].values.at(panel));
            with_children.emplace_back(curve[index].iteration, data.with_children.at(mode)[index]);
        }
        draw_curve(scale, points, colours.at(mode), "");
        if (panel + 1 == panel_count) {
            draw_curve(scale, with_children, colours.at(mode), "stroke-dasharray=\"2 3\"");
        }
    }
}

void draw_legend(const Data& data) {
    double y = first_top + 10;
    for (const auto& [mode, curve] : data.curves) {
        std::printf("<line x1=\"%.0f\" x2=\"%.0f\" y1=\"%.0f\" y2=\"%.0f\" stroke=\"%s\" "
                    "stroke-width=\"3\"/>\n",
                    right + 20, right + 44, y, y, colours.at(mode));
        draw_text(right + 52, y + 4, "start", std::string("-") + mode);
        y += 22;
    }
}

} // namespace

int main() {
    const Data data = read_data(std::cin);
    if (data.curves.empty()) {
        std::fprintf(stderr, "endurance_plot: nothing to draw\n");
        return EXIT_FAILURE;
    }
    const double height = first_top + panel_distance * static_cast<double>(panel_count);
    std::printf("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" "
                "font-family=\"sans-serif\" font-size=\"12\">\n"
                "<rect width=\"100%%\" height=\"100%%\" fill=\"white\"/>\n",
                width, height);
    for (std::size_t panel = 0; panel < panel_count; ++panel) {
        draw_panel(data, panel);
    }
    draw_legend(data);
    draw_text(right, height - 8, "end", "iterations");
    std::printf("</svg>\n");
    return EXIT_SUCCESS;
}
