"""What a notebook shows of a result: verdict, summary, checks, drawings."""

from __future__ import annotations

from html import escape
from typing import TYPE_CHECKING, Any, Iterable, Optional

if TYPE_CHECKING:
    from ._result import Check, Component, Result

# A state that isn't here is neither good nor bad: it has no colour.
_COLOURS = {"pass": "#1a7f37", "fail": "#cf222e", "not made": "#bf8700"}
_HEADINGS = ("Component", "Check", "Paragraph", "Demand", "", "Limit", "Unit", "Ratio", "State")
_RIGHT = {"Demand", "Limit", "Ratio", "Value"}


def _number(value: Optional[float]) -> str:
    return "" if value is None else f"{value:.6g}"


def _coloured(state: str) -> str:
    colour = _COLOURS.get(state)
    return f'<b style="color:{colour}">{escape(state)}</b>' if colour else escape(state)


def _table(title: str, headings: Iterable[str], rows: Iterable[Iterable[str]]) -> str:
    """Cells are HTML."""
    sides = ["right" if heading in _RIGHT else "left" for heading in headings]
    head = "".join(f'<th style="text-align:{side}">{heading}</th>' for side, heading in zip(sides, headings))
    body = "".join(
        "<tr>" + "".join(f'<td style="text-align:{side}">{cell}</td>' for side, cell in zip(sides, row)) + "</tr>"
        for row in rows
    )
    return f"<table><caption>{escape(title)}</caption><thead><tr>{head}</tr></thead><tbody>{body}</tbody></table>"


def _verdict(of: Any) -> str:
    colour = _COLOURS.get(of.verdict, "#57606a")
    return (f'<p style="border-left:4px solid {colour};padding-left:8px">'
            f'<b style="color:{colour}">{escape(of.verdict.upper())}</b> {escape(of.says)}</p>')  # fmt: skip


def _row(check: Check) -> list[str]:
    words = f"{check.label}, {check.case}" if check.case else check.label
    told = escape(words) + (f"<br><small>{escape(check.reason)}</small>" if check.reason else "")
    return [escape(check.component), told, escape(check.paragraph), _number(check.demand), escape(check.operator),
            _number(check.limit), escape(check.unit), "" if check.ratio is None else f"{check.ratio:.4f}",
            _coloured(check.state)]  # fmt: skip


def _figures(title: str, drawings: Iterable[str]) -> str:
    """Of an SVG file the element is taken."""
    elements = [svg[max(svg.find("<svg"), 0) :] for svg in drawings]
    return "".join(f"<figure><figcaption>{escape(title)}</figcaption>{svg}</figure>" for svg in elements)


def _title(component: Component) -> str:
    return f"{component.path} {component.description}".rstrip()


def of_component(component: Component) -> str:
    parts = [_verdict(component), _table("Checks", _HEADINGS, map(_row, component.checks)),
             _figures(_title(component), component.drawings.values())]  # fmt: skip
    return f"<div>{''.join(parts)}</div>"


def of_result(result: Result) -> str:
    parts = [_verdict(result)]
    if result.summary:
        rows = [[escape(row.label), _number(row.value) or "none", escape(row.unit), escape(row.component or ""),
                 escape("; ".join(filter(None, (row.note, *row.lacks))))]
                for row in result.summary.values()]  # fmt: skip
        parts.append(_table("Summary", ("", "Value", "Unit", "Component", "Note"), rows))
    parts.append(_table("Checks", _HEADINGS, map(_row, result.checks)))
    parts.append(_figures("Vessel", result.drawings.values()))
    parts += [_figures(_title(component), component.drawings.values()) for component in result.components]
    return f"<div>{''.join(parts)}</div>"
