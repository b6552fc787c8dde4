// The folder of a program that is translated into several C files.
#pragma once

#include <string>
#include <vector>

#include "refhost/translated_file.h"

namespace velc {

// The list of the C files and headers in such a folder, one name in a line. By it velc knows the
// files that it wrote, and the tools that build them know what there is.
constexpr const char* kFileList = "vel_files.txt";

// Writes those of the files that differ from what is there, so that the others keep their times,
// and removes files that velc wrote there before and that the program no longer has. Makes the
// folder if there is none. Throws Failure if a file cannot be written, and, before it writes
// anything, if one that is to be written is not velc's own.
void writeSplitFolder(const std::string& folder, const std::vector<refhost::TranslatedFile>& files);

// Writes the text unless the file has it.
void writeIfDifferent(const std::string& path, const std::string& text);

}  // namespace velc
