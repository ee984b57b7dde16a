#include "help/help_index.h"

#include "core/text.h"
#include "formats/help_text.h"
#include "words/help.h"
#include "words/lists.h"

namespace kestrova
{

namespace
{

std::vector<std::string> InUtf8(const std::vector<std::string>& topics)
{
    std::vector<std::string> texts;
    texts.reserve(topics.size());
    for (const std::string& topic : topics)
        texts.push_back(FromWindows1252(topic));
    return texts;
}

} // namespace

HelpIndex::HelpIndex(Host& host, std::string_view help) : host_(host)
{
    const HelpTopics topics = TopicsOf(help);
    main_ = InUtf8(topics.main);
    sub_ = InUtf8(topics.sub);
    Show(true);
}

void HelpIndex::Show(bool main)
{
    showsMain_ = main;
    selected.reset();
    hits_.clear();
    hit_ = 0;
    count_ = Items().size();
}

const std::vector<std::string>& HelpIndex::Items() const
{
    return showsMain_ ? main_ : sub_;
}

std::string HelpIndex::Info() const
{
    return std::to_string(count_) + GetMsg(Msg::HelpItems);
}

void HelpIndex::Find(const std::string& text)
{
    const std::string wanted = FoldCase(Trim(text));
    hits_.clear();
    hit_ = 0;
    for (std::size_t i = 0; i < Items().size(); ++i)
        if (FoldCase(Items()[i]).find(wanted) != std::string::npos)
            hits_.push_back(i);
    count_ = hits_.size();
    if (!hits_.empty())
        selected = hits_.front();
}

void HelpIndex::Next()
{
    if (hit_ + 1 < hits_.size())
        selected = hits_[++hit_];
}

void HelpIndex::Previous()
{
    if (hit_ > 0)
        selected = hits_[--hit_];
}

std::optional<std::string> HelpIndex::Chosen()
{
    if (selected && *selected < Items().size())
        return Items()[*selected];
    host_.Tell(Tone::Error, GetMsg(Msg::NoSelectedItem));
    return std::nullopt;
}

} // namespace kestrova
