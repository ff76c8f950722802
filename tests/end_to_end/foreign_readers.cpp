#include "end_to_end/foreign_readers.h"

#include "support/run_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <ostream>

namespace tonquay::test {

namespace {

using Json = nlohmann::json;

constexpr const char* blockReader = R"python(
import json, pathlib, struct, sys
found = {}
for path in pathlib.Path(sys.argv[1]).rglob("*.mp3"):
    if not path.is_file():
        continue
    block = path.read_bytes()[-128:]
    if len(block) == 128 and block[:3] == b"TAG":
        *texts, zero, track, genre = struct.unpack("3x30s30s30s4s28sBBB", block)
        assert zero == 0, path
        found[str(path.relative_to(sys.argv[1]))] = [
            text.split(b"\0")[0].decode("latin-1") for text in texts] + [str(track), str(genre)]
print(json.dumps(found))
)python";

std::string lower(std::string text)
{
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

void addTags(SoundFacts& facts, const Json& holder)
{
    if (const auto tags = holder.find("tags"); tags != holder.end())
        for (const auto& [name, value] : tags->items())
            facts[lower(name)] = value.get<std::string>();
}

}

SoundFacts soundFacts(const std::filesystem::path& file)
{
    const ProgramEnd end = runProgram({"ffprobe", "-v", "quiet", "-show_streams", "-show_format", "-of", "json", file});
    EXPECT_EQ(end.status, 0) << file;
    const Json json = Json::parse(end.out, nullptr, false);
    SoundFacts facts;
    if (json.is_discarded() || !json.contains("streams") || json["streams"].empty())
        return facts;
    const Json& stream = json["streams"][0];
    facts["codec"] = stream.value("codec_name", "");
    facts["channels"] = std::to_string(stream.value("channels", 0));
    facts["kbps"] = std::to_string(std::stoi(stream.value("bit_rate", "0")) / 1000);
    facts["seconds"] = json["format"].value("duration", "");
    addTags(facts, stream);
    addTags(facts, json["format"]);
    return facts;
}

std::ostream& operator<<(std::ostream& out, const Id3v1Facts& facts)
{
    return out << '"' << facts.title << "\" \"" << facts.artist << "\" \"" << facts.album << "\" \"" << facts.year
               << "\" \"" << facts.comment << "\" " << facts.track << ' ' << facts.genre;
}

std::map<std::string, Id3v1Facts> id3v1Facts(const std::filesystem::path& folder)
{
    const ProgramEnd end = runProgram({"python3", "-c", blockReader, folder});
    EXPECT_EQ(end.status, 0) << end.out;
    std::map<std::string, Id3v1Facts> found;
    const Json json = Json::parse(end.out, nullptr, false);
    for (const auto& [path, f] : json.items())
        found[path] = {f[0], f[1], f[2], f[3], f[4], f[5], f[6]};
    return found;
}

}
