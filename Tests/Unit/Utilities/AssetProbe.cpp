#include "Utilities/AssetManager.h"

#include <iostream>

/// Prints where each asset named on the command line is, or why it is not to be had.
int main(int count, char** arguments)
{
    for (int i = 1; i < count; ++i)
        try {
            std::cout << AssetManager::getInstance().findFile(arguments[i]).string() << '\n';
        } catch (AssetError const& error) {
            std::cout << error.what() << '\n';
        }
}
