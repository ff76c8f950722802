#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::host {

/// A host name (one step of a path, as bytes) in the program's form, and back. Bytes that are not UTF-8 become U+DC80
/// to U+DCFF; backslash and colon, which mean something else in a program's path, become U+F05C and U+F03A.
std::wstring programName(std::string_view hostName);
std::string hostName(std::wstring_view programName);

/// The host path of what lies in a host folder.
std::string joined(std::string folder, std::string_view hostName);

/// A path of the program, taken apart: the drive and the names from its root on, without "." and "..".
struct Place {
    wchar_t drive = L'C';
    std::vector<std::wstring> names;

    std::wstring text() const; ///< "C:\A\B", a root with its backslash
};

/// Knows where the program's drives lie on this system, which drive is current, and the current folder of each.
/// Finding a name costs one look when the case is right and a reading of the folder when it is not.
class PathMap {
public:
    struct Drives {
        std::string root = "/";    ///< what C: is
        std::string programFolder; ///< what C:\CDTONQUAY is; empty: nothing special
        /// How many trackNN.cda names can be seen on an optical drive; 0 for none, below 0 when there is no such drive.
        std::function<int(wchar_t letter)> discTracks;
    };

    explicit PathMap(Drives drives);

    /// Nothing for an empty path, one with a NUL in it, or a drive letter that is no letter.
    std::optional<Place> place(std::wstring_view path) const;

    /// The host path of a place on C:. Names match without regard to case, an exact match first, then the first in
    /// byte order; from the first name on that is not there, the names stand as they were given.
    std::string host(const Place& place) const;

    /// The host path of a path on C: with the names as they are given, whatever is there; null for a path elsewhere or
    /// one that is none. It holds until the next call. What is asked of one file after the other costs next to nothing.
    const std::string* asGiven(std::wstring_view path) const;

    /// The place of an absolute host path; nothing for one outside the root.
    std::optional<Place> program(std::string_view hostPath) const;

    /// How many disc tracks can be seen on the place's drive: below 0 when there is no such drive.
    int discTracks(wchar_t drive) const;

    void setCurrentDrive(wchar_t drive) { drive_ = drive; }
    Place currentFolder() const;
    void setCurrentFolder(const Place& folder);

private:
    bool beginsInProgramFolder(const Place& place) const;
    bool joinsPlainly(std::wstring_view path) const;
    std::string joinedAsGiven(const Place& place) const;

    Drives drives_;
    mutable std::wstring lastPath_; ///< that asGiven() has answered with lastHost_
    mutable std::string lastHost_;
    wchar_t drive_ = L'C';
    std::map<wchar_t, std::vector<std::wstring>> folders_;
};

}
