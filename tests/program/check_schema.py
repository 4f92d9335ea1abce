"""check_schema.py PROGRAM SCHEMAS INPUT SERIES: what the program writes is what its schemas say.

INPUT holds a fill time, SERIES a phase fraction over time."""

import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema


def schema(folder, name):
    return jsonschema.Draft202012Validator(json.loads((folder / name).read_text()))


def refuses(validator, document, change):
    broken = json.loads(json.dumps(document))
    change(broken)
    return not validator.is_valid(broken)


def main():
    program, schemas, case, series = sys.argv[1], pathlib.Path(sys.argv[2]), *sys.argv[3:]
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        subprocess.run([program, "analyze", case, "--json", folder / "s.json", "-o",
                        folder / "r.vtu", "--lines", folder / "l.vtp", "--csv", folder / "l.csv"],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        summary = json.loads((folder / "s.json").read_text())
        subprocess.run([program, "report", folder / "r.vtu", "-o", folder / "r.html"], check=True)
        subprocess.run([program, "check", case, "--json", folder / "c.json"], check=True,
                       stdout=subprocess.DEVNULL)
        checked = json.loads((folder / "c.json").read_text())
        informed = [json.loads(subprocess.run(
            [program, "info", data, "--inlet", "nobody", "--outlet", "nobody", "--json", "-"],
            check=True, stdout=subprocess.PIPE).stdout)
            for data in (case, series)]
        page = (folder / "r.html").read_text()
    validator = schema(schemas, "summary-1.json")
    validator.validate(summary)
    assert summary["components"], "the case has weld lines"
    assert refuses(validator, summary, lambda s: s["components"][0].pop("length"))
    assert refuses(validator, summary, lambda s: s["components"][0].update({"class": "wild"}))
    validator = schema(schemas, "check-1.json")
    validator.validate(checked)
    assert refuses(validator, checked, lambda c: c["findings"][0].pop("value"))
    assert refuses(validator, checked, lambda c: c["findings"][0].update({"level": "fine"}))
    validator = schema(schemas, "info-1.json")
    for info in informed:
        validator.validate(info)
        assert refuses(validator, info, lambda i: i["proposed"][0].pop("faces"))
        assert refuses(validator, info, lambda i: i["proposedFrom"].pop("series"))
    assert [info["proposedFrom"]["field"] for info in informed] == ["FillTime", "alpha"]
    data = page.split('id="report-data">', 1)[1].split("</script>", 1)[0]
    document = json.loads(data)
    validator = schema(schemas, "report-1.json")
    validator.validate(document)
    assert refuses(validator, document, lambda s: s["lines"][0].pop("polylines"))


main()
