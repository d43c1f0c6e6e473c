#include "catalogue/units.h"
#include "components/element.h"
#include "surface/schema.h"
#include "values/json.h"
#include "values/text.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tarvane::vessel {

namespace {

std::string_view quantity_name(Quantity quantity) {
    switch (quantity) {
    case Quantity::thickness:
        return "thickness";
    case Quantity::pressure:
        return "pressure";
    case Quantity::diameter:
        return "diameter";
    case Quantity::stress:
        return "stress";
    case Quantity::further:
        return "further";
    case Quantity::force:
        return "force";
    case Quantity::moment:
        return "moment";
    case Quantity::area:
        return "area";
    case Quantity::temperature:
        return "temperature";
    case Quantity::temperature_scale:
        return "temperature difference";
    case Quantity::weight:
        return "weight";
    case Quantity::density:
        return "density";
    case Quantity::number:
        return "number";
    case Quantity::whole:
        return "whole number";
    case Quantity::choice:
        return "choice";
    case Quantity::flag:
        return "flag";
    case Quantity::text:
        return "text";
    case Quantity::waivers:
        return "list of checks";
    case Quantity::designation:
        break;
    }
    return "designation";
}

class Vocabulary {
  public:
    std::string write() {
        json.begin_object().key("tarvane").whole(1).key("kinds").begin_list();
        for (const ElementKind* kind : element_kinds())
            write_kind(*kind);
        json.end_list().end_object();
        return json.take();
    }

  private:
    JsonWriter json;

    void put(std::string_view name, std::string_view words) {
        if (!words.empty()) json.key(name).text(words);
    }
    void write_quantity(Quantity quantity) {
        put("quantity", quantity_name(quantity));
        const std::string us = to_utf8(us_units().label(quantity));
        if (us.empty()) return;
        json.key("units").begin_object();
        put("US", us);
        put("SI", to_utf8(si_units().label(quantity)));
        json.end_object();
    }
    // {} is always true. The words are for people.
    void write_condition(std::string_view name, const Condition& condition, const KeyTable& keys) {
        json.key(name).begin_object();
        if (condition.terms[0].is != Term::Is::unused) json.key("all").begin_list();
        for (const Term& term : condition.terms) {
            if (term.is == Term::Is::unused) continue;
            json.begin_object();
            put("key", term.key);
            if (term.is == Term::Is::among) {
                json.key("among").begin_list();
                for (int number = 0; number < 32; ++number) {
                    if (term.holds(number)) json.whole(number);
                }
                json.end_list();
            } else {
                json.key("given").flag(term.is == Term::Is::given);
            }
            json.end_object();
        }
        if (condition.terms[0].is != Term::Is::unused) json.end_list();
        put("rule", condition.rule);
        put("words", in_words(condition, keys));
        json.end_object();
    }
    void write_choices(std::span<const Choice> choices) {
        if (choices.empty()) return;
        json.key("choices").begin_list();
        for (const Choice& choice : choices) {
            json.begin_object().key("name").text(choice.name);
            json.key("number").whole(choice.number).end_object();
        }
        json.end_list();
    }
    void write_key(const Key& key, const KeyTable& keys) {
        json.begin_object();
        put("name", key.name);
        write_quantity(key.quantity);
        put("label", key.label());
        put("symbol", key.symbol);
        put("meaning", key.meaning);
        put("section", keys.section(key));
        put("engine", key.engine());
        if (key.decimals) json.key("decimals").whole(*key.decimals);
        if (!key.read.always()) write_condition("read", key.read, keys);
        if (key.needed) write_condition("required", *key.needed, keys);
        write_choices(key.choices);
        if (key.width > 0) json.key("width").whole(key.width);
        // In the units of the engine, as in the tables.
        json.key("default").single(static_cast<float>(key.fallback));
        if (key.newer_fallback)
            json.key("newer_default").single(static_cast<float>(*key.newer_fallback));
        put("group", key.group);
        json.end_object();
    }
    void write_kind(const ElementKind& kind) {
        json.begin_object();
        put("name", kind.table);
        put("plural", kind.plural);
        json.key("most").whole(static_cast<std::int64_t>(kind.most));
        json.key("keys").begin_list();
        for (const Key& key : kind.keys.keys)
            write_key(key, kind.keys);
        json.end_list().key("second_names").begin_list();
        for (const Alias& alias : kind.keys.aliases)
            json.begin_object()
                .key("name")
                .text(alias.other)
                .key("key")
                .text(alias.ours)
                .end_object();
        json.end_list().key("tables").begin_list();
        for (const InnerTable& inner : kind.keys.tables) {
            json.begin_object().key("name").text(inner.name).key("keys").begin_list();
            for (const std::string_view key : inner.keys)
                json.text(key);
            json.end_list().end_object();
        }
        json.end_list().key("results").begin_list();
        for (const ResultField& field : kind.results) {
            json.begin_object();
            put("name", field.name);
            put("symbol", field.symbol);
            write_quantity(field.quantity);
            put("label", field.label);
            put("meaning", field.meaning);
            write_choices(field.choices);
            json.end_object();
        }
        json.end_list().key("checks").begin_list();
        for (const CheckField& field : kind.checks) {
            json.begin_object();
            put("id", field.id);
            put("paragraph", field.paragraph);
            put("label", field.label);
            write_quantity(field.quantity);
            json.key("operator").text(field.at_least ? ">=" : "<=");
            put("case", field.load_case);
            put("asked", field.asked.empty() ? "always" : field.asked);
            put("force", force_name(field.force));
            json.key("waivable").flag(field.waivable);
            json.end_object();
        }
        json.end_list().end_object();
    }
};

} // namespace

std::string vocabulary() { return Vocabulary().write(); }

} // namespace tarvane::vessel
