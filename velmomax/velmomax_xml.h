/// The reference page of an object, in the format that the host's help system shows, written from what the class itself
/// tells at run time: its documentation attributes, its documented messages and its attributes. Main thread.
///
/// Texts go onto the page exactly as they are stored, since they may carry the format's own markup ("<m>", "<o>",
/// "<br/>"). A text that holds other characters special to XML must be stored escaped.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "velmomax_api.h"
#include "velmomax_attribute.h"

namespace velmomax {

/// The suite's rights notice, as the page shows it; it begins with one blank.
inline constexpr char suiteNotice[] = " Copyright (c) 2026 the velmodsp authors. Released under the MIT License.";

/// Writes the page of one object.
///
///     MaxXmlDocumentation page(x);
///     page.sortingType = MaxAttribute::ByOrder;
///     page.GenerateXmlDocumentation();
class MaxXmlDocumentation {
public:
    /// A message that the class documents.
    struct MethodDescription {
        std::string name, description;
        /// Of the arguments, both counted from 1; element 0 is empty.
        std::vector<std::string> argumentDescriptions, argumentTypes;
    };

    /// @param objectToDocument must outlive this
    explicit MaxXmlDocumentation(t_object* objectToDocument) : object(objectToDocument) {}

    t_object* object;
    MaxAttribute::AttrSortingType sortingType = MaxAttribute::Alphabetical;  ///< order of the attributes
    std::string styleSheet = "./_c74_ref.xsl";                               ///< what shows the page
    std::string notice = suiteNotice;                                        ///< rights notice

    /// Writes the page to "<class name>.maxref.xml" in the user's home directory, in the place of an earlier one, and
    /// posts where. A page that cannot be written is reported as an error of the object; there is no page then.
    /// @throws std::bad_alloc
    void GenerateXmlDocumentation() const;

    /// The label of the attribute "externalversion"; "unknown version" when it holds no text.
    std::string GetObjectVersion() const;

    // Sections of the page, in its order.
    void printXmlHeader(std::ostream& stream) const;
    void printDigestAndDescription(std::ostream& stream) const;
    void printMetadata(std::ostream& stream) const;
    void printInlets(std::ostream& stream) const;
    void printOutlets(std::ostream& stream) const;
    void printArguments(std::ostream& stream) const;
    void printAttributes(std::ostream& stream) const;
    void printMethods(std::ostream& stream) const;
    void printSeeAlso(std::ostream& stream) const;
    void printMenuItemList(std::ostream& stream) const;
    void printExample(std::ostream& stream) const;

    // What the class tells, all of it kept on its attribute "classdescription" but for the list of related objects. The
    // outputs are cleared first, and stay empty where the class tells nothing. A class without that attribute is
    // reported in the Max window.

    /// The array "inlets": one description each, from the left.
    void GetObjectListOfInletsDescription(std::vector<std::string>& descriptions) const;
    /// The array "outlets", likewise.
    void GetObjectListOfOutletsDescription(std::vector<std::string>& descriptions) const;
    /// The array "arguments": name, description and type of one after the other. An incomplete last one is left out.
    void GetObjectListOfArguments(std::vector<std::string>& names, std::vector<std::string>& descriptions,
                                  std::vector<std::string>& types) const;
    /// The items that the label of "classseealso" lists between commas, without blanks. An empty label is one empty
    /// item.
    void GetObjectSeeAlsoList(std::vector<std::string>& items) const;
    /// The messages documented by `class_doc_method`, in the order of documenting.
    void getObjectMethodsDescription(std::vector<MethodDescription>& methods) const;

private:
    void printPage(std::ostream& page) const;
    std::string className() const;
    std::string labelOf(const char* attribute) const;
    t_object* storeOf(const char* collector, const char* name) const;
};

/// Writes the reference page of `x`; the arguments are the fields of `MaxXmlDocumentation`.
void GenerateXmlDocumentation(t_object* x, const char* styleSheet, const MaxAttribute::AttrSortingType& sorting,
                              const char* notice) noexcept;

}  // namespace velmomax
