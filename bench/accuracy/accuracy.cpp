// Measures how true the meeting angles are and writes the tables and pictures of docs/accuracy.md.

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "Study.h"
#include "base/Errors.h"

namespace {

constexpr const char* kUsage =
    "usage: weldline_accuracy [--document FILE] [--pictures FOLDER] [--only-data] [DATASET...]\n"
    "\n"
    "  --document FILE    Markdown file whose tables are replaced; without it, and for tables\n"
    "                     that have no place in it, standard output\n"
    "  --pictures FOLDER  existing folder for the pictures; without it none are drawn\n"
    "  --only-data        leave out the cases with known weld lines\n"
    "  DATASET            filling results (.vtu, .foam) on which all schemes are run, too\n";

struct Arguments {
    std::string document, pictures;
    bool onlyData = false;
    bool help = false;
    std::vector<std::string> dataSets;
};

Arguments read(int argc, char** argv) {
    Arguments arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const bool takesValue = word == "--document" || word == "--pictures";
        if (takesValue && i + 1 == argc) throw weldline::UsageError(word + " needs a value");
        if (word == "--document")
            arguments.document = argv[++i];
        else if (word == "--pictures")
            arguments.pictures = argv[++i];
        else if (word == "--only-data")
            arguments.onlyData = true;
        else if (word == "--help")
            arguments.help = true;
        else if (word.starts_with("--"))
            throw weldline::UsageError("unknown option '" + word + "'; see --help");
        else
            arguments.dataSets.push_back(word);
    }
    return arguments;
}

void measure(const Arguments& arguments) {
    using namespace weldline::accuracy;
    Document document(arguments.document);
    const Runner runner;
    if (!arguments.onlyData) {
        studySchemes(runner, document, arguments.pictures);
        studySmoothing(runner, document, arguments.pictures);
        studyShortShot(runner, document);
        studySwitch(runner, document);
        studyRbfCost(document);
    }
    for (const std::string& file : arguments.dataSets) studyDataSet(runner, document, file);
    document.save();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Arguments arguments = read(argc, argv);
        if (arguments.help)
            std::cout << kUsage;
        else
            measure(arguments);
    } catch (const weldline::UsageError& error) {
        std::cerr << "weldline_accuracy: " << error.what() << "\n";
        return 2;
    } catch (const weldline::InputError& error) {
        std::cerr << "weldline_accuracy: " << error.what() << "\n";
        return 3;
    } catch (const std::exception& error) {
        std::cerr << "weldline_accuracy: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
