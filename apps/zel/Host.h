// What a program of the suite does at its start: it finds the folder for data common to all users, takes the texts of the
// chosen language, and opens the file of error messages.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace zel {

// Adds --common and --messages to the program, and does the start when the command line has been read.
void AddHostOptions(CLI::App& program);

// The same start once more with another folder for common data, for a job that names one; a folder that the command line names holds
// all the same. The language of translations is the folder's only while nothing has been translated.
void UseCommonFolder(const std::string& folder);

// The suite's folder below the folder for common data, as a person types it, with a final "/"; empty when there is none.
std::string SuiteFolder();

// `name` in the suite's folder.
std::string SuiteFile(const std::string& name);

// The file of error messages, whether it could be opened or not.
std::string MessagesFile();

// Whether the language's numbered texts were found at the start.
bool LanguageTextsInstalled();

}  // namespace zel
