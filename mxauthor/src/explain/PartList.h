#pragma once

#include "mxauthor/Explain.h"

namespace mxauthor {

/// Collects the parts of one group, field by field; bytes of no field are filled in.
class PartList
{
public:
    PartList(int indexOfGroup, bool isGroupRead) : group(indexOfGroup), groupIsRead(isGroupRead) {}

    /// Begins the record `index`; what follows belongs to it.
    void beginRecord(std::size_t index, const std::string& subject);

    /// Ends the records; what follows belongs to the group.
    void endRecords();

    template <typename Number>
    void number(const Field<Number>& field, const char* name, const std::string& meaning)
    {
        add(field.place, name, ExplainedPart::Kind::Number, std::to_string(field.value), meaning);
    }
    void text(const Field<std::string>& field, const char* name, const std::string& meaning);
    void bytes(const Field<Bytes>& field, const char* name, const std::string& meaning);

    /// Adds bytes at a place of their own, as part of a field.
    void bytesAt(const Place& place, const char* name, const std::string& meaning);

    /// Marks the part that was added last as not read.
    void unread();

    /// Adds the parts of the payload at `payload` to `target`, every byte of it in one of them.
    /// What is between fields is classified by `bytesOfFile`.
    void appendTo(std::vector<ExplainedPart>& target, const Place& payload,
                  const std::vector<char>& bytesOfFile) &&;

private:
    void add(const Place& place, const char* name, ExplainedPart::Kind kind,
             const std::string& value, const std::string& meaning);

    int group;
    bool groupIsRead;
    bool lastIsEmpty = true; // the part that was added last has no bytes and was left out
    int record = -1;
    std::string subject;
    std::vector<ExplainedPart> parts;
};

} // namespace mxauthor
