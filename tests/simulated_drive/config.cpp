#include "config.h"

#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>

namespace tonquay::simulated {
namespace {

using Line = std::istringstream;
using Setter = std::function<void(Config&, Line&)>;

std::string rest(Line& line)
{
    std::string text;
    std::getline(line >> std::ws, text);
    return text;
}

Setter text(std::string Config::*member)
{
    return [member](Config& config, Line& line) {
        config.*member = rest(line);
        line.clear();
    };
}

template <class Number>
Setter number(Number Config::*member)
{
    return [member](Config& config, Line& line) { line >> config.*member; };
}

Setter word(bool Config::*member, const std::string& yes)
{
    return [member, yes](Config& config, Line& line) {
        std::string value;
        line >> value;
        config.*member = value == yes;
    };
}

void readTrack(Config& config, Line& line)
{
    std::string kind;
    Config::Track track;
    if (line >> kind >> track.firstSector) {
        track.audio = kind == "audio";
        config.tracks.push_back(track);
    }
}

void readFault(Config& config, Line& line)
{
    static const std::map<std::string, Config::Fault> faults{{"none", Config::Fault::none},
                                                             {"missing", Config::Fault::missing},
                                                             {"denied", Config::Fault::denied},
                                                             {"busy", Config::Fault::busy}};
    std::string name;
    line >> name;
    const auto found = faults.find(name);
    if (found == faults.end())
        line.setstate(std::ios::failbit);
    else
        config.fault = found->second;
}

void readBad(Config& config, Line& line)
{
    for (int sector = 0; line >> sector;)
        config.bad.push_back(sector);
    if (line.eof())
        line.clear();
}

void readJitter(Config& config, Line& line)
{
    line >> config.jitterEvery >> config.jitterSamples;
}

const std::map<std::string, Setter>& setters()
{
    static const std::map<std::string, Setter> table{
        {"device", text(&Config::device)},
        {"image", text(&Config::image)},
        {"cdtext", text(&Config::cdText)},
        {"log", text(&Config::log)},
        {"vendor", text(&Config::vendor)},
        {"product", text(&Config::product)},
        {"revision", text(&Config::revision)},
        {"fault", readFault},
        {"group", number(&Config::group)},
        {"mode_page", word(&Config::modePage, "yes")},
        {"first_number", number(&Config::firstNumber)},
        {"track", readTrack},
        {"lead_out", number(&Config::leadOut)},
        {"last_session", number(&Config::lastSession)},
        {"medium", word(&Config::medium, "in")},
        {"door", word(&Config::doorOpen, "open")},
        {"ready", word(&Config::ready, "yes")},
        {"bad", readBad},
        {"jitter", readJitter},
        {"remove_after", number(&Config::removeAfter)},
        {"slow_read", number(&Config::slowRead)},
        {"slow_command", number(&Config::slowCommand)},
    };
    return table;
}

}

Config readConfig(const std::string& file)
{
    Config config;
    std::ifstream input(file);
    if (!input)
        std::cerr << "simulated drive: cannot read " << file << '\n';
    for (std::string content; std::getline(input, content);) {
        Line line(content);
        std::string key;
        if (!(line >> key) || key.front() == '#')
            continue;
        const auto setter = setters().find(key);
        if (setter != setters().end())
            setter->second(config, line);
        if (setter == setters().end() || line.fail())
            std::cerr << "simulated drive: " << file << ": no such line: " << content << '\n';
    }
    return config;
}

}
