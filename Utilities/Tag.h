#pragma once

#include <string>
#include <utility>
#include <vector>

/// An element's name and its attributes, in order.
class Tag {
public:
    using Attribute = std::pair<std::string, std::string>;

    explicit Tag(std::string name) : Tag(name, name) {}

    [[nodiscard]] std::string const& getName() const { return name_; }

    /// The name after the names of the elements around it, as errors give it: "material/ambient".
    [[nodiscard]] std::string const& getPath() const { return path_; }

    [[nodiscard]] std::vector<Attribute> const& getAttributes() const { return attributes_; }

    /// An attribute's text; the first one's where a document gives several of a name. Throws TagError where
    /// there is none.
    [[nodiscard]] std::string const& getAttr(std::string const& name) const;

    /// Adds an attribute after those there are.
    void addAttr(std::string name, std::string value);

protected:
    Tag(std::string name, std::string path) : name_(std::move(name)), path_(std::move(path)) {}

private:
    std::string name_;
    std::string path_;
    std::vector<Attribute> attributes_;
};
