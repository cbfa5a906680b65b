#!/usr/bin/env python3
"""Compares the declarations of this folder with bindings that were generated from the system's own headers (objc2, written in Rust).

Usage: compare.py FOLDER_OF_THE_BINDINGS [CLANG]

Every function (number and kinds of its parameters and result), exported constant, enumerator (value), structure (fields and packing), class
(parent), method and property accessor (selector, class or instance, kinds) is looked up by its name. The kind of a type is what the machine
sees of it: a pointer, an integer of a width, a floating-point number, a structure. Says what differs and what the bindings do not have; the
status is 1 when something differs.
"""
import json
import pathlib
import re
import subprocess
import sys

HEADERS = ["AppKit/AppKit.h", "ApplicationServices/ApplicationServices.h", "Carbon/Carbon.h", "ServiceManagement/ServiceManagement.h"]
FRAMEWORKS = ["AppKit", "ApplicationServices", "Carbon", "CoreFoundation", "CoreGraphics", "CoreServices", "Dispatch", "Foundation",
              "ServiceManagement"]
PRIMITIVES = {
    "bool": "b8", "c_char": "i8", "i8": "i8", "u8": "u8", "c_uchar": "u8", "i16": "i16", "c_short": "i16", "u16": "u16", "c_ushort": "u16",
    "i32": "i32", "c_int": "i32", "u32": "u32", "c_uint": "u32", "i64": "i64", "isize": "i64", "c_long": "i64", "NSInteger": "i64",
    "CFIndex": "i64", "c_longlong": "i64", "u64": "u64", "usize": "u64", "NSUInteger": "u64", "c_ulong": "u64", "c_ulonglong": "u64",
    "f32": "f32", "c_float": "f32", "f64": "f64", "c_double": "f64", "CGFloat": "f64", "libc::pid_t": "i32", "pid_t": "i32", "Boolean": "u8",
    "CFTypeID": "u64", "CFHashCode": "u64", "UniChar": "u16", "unichar": "u16", "OSStatus": "i32", "OSType": "u32", "UInt32": "u32",
    "SInt32": "i32", "ByteCount": "u64", "ItemCount": "u64", "OptionBits": "u32", "NSTimeInterval": "f64", "NSWindowLevel": "i64",
    "CGWindowID": "u32", "DispatchTime": "u64", "FourCharCode": "u32",
}
C_KINDS = {
    "void": "void", "bool": "b8", "unsigned char": "u8", "signed char": "i8", "short": "i16", "unsigned short": "u16", "int": "i32",
    "unsigned int": "u32", "long": "i64", "unsigned long": "u64", "long long": "i64", "unsigned long long": "u64", "float": "f32",
    "double": "f64",
}


class Ours:
    """What the headers of this folder declare, as clang understands it."""

    def __init__(self, folder, clang):
        source = "".join(f"#include <{header}>\n" for header in HEADERS)
        command = [clang, "-target", "arm64-apple-macos13.0", "-x", "objective-c++", "-std=c++20", "-fobjc-arc", "-fblocks", "-nostdlibinc",
                   "-isystem", str(folder), "-isystem", str(folder.parent / "cross/headers"), "-isystem", "/usr/include/x86_64-linux-musl",
                   "-fsyntax-only", "-Xclang", "-ast-dump=json", "-"]
        tree = json.loads(subprocess.run(command, input=source, capture_output=True, text=True, check=True).stdout)
        self.folder = str(folder)
        self.functions, self.constants, self.enumerators, self.structures, self.classes, self.methods = {}, set(), {}, {}, {}, {}
        self.file = ""
        self.visit(tree["inner"])

    def visit(self, nodes):
        for node in nodes:
            for place in (node.get("loc", {}), node.get("loc", {}).get("expansionLoc", {}), node.get("loc", {}).get("spellingLoc", {})):
                self.file = place.get("file", self.file)
            if self.file.startswith(self.folder) and not self.file.startswith(self.folder + "/objc/objc.h"):
                self.add(node)
            elif node["kind"] == "LinkageSpecDecl":
                self.visit(node.get("inner", []))

    def add(self, node):
        kind, name, inner = node["kind"], node.get("name"), node.get("inner", [])
        if kind == "LinkageSpecDecl":
            self.visit(inner)
        elif kind == "FunctionDecl" and node.get("storageClass") != "static":
            parameters = [self.kind(child["type"]) for child in inner if child["kind"] == "ParmVarDecl"]
            self.functions[name] = (parameters, self.kind_of_text(node["type"]["qualType"].split("(")[0].strip()))
        elif kind == "VarDecl" and "init" not in node:
            self.constants.add(name)
        elif kind == "VarDecl":
            self.enumerators[name] = float(self.value(inner[0]))
        elif kind == "EnumDecl":
            last = -1
            for child in (entry for entry in inner if entry["kind"] == "EnumConstantDecl"):
                last = int(self.value(child["inner"][0])) if child.get("inner") else last + 1
                self.enumerators[child["name"]] = last
        elif kind == "CXXRecordDecl" and name and node.get("completeDefinition"):
            fields = [child["name"] for child in inner if child["kind"] == "FieldDecl"]
            self.structures[name] = (fields, any(child["kind"] == "MaxFieldAlignmentAttr" for child in inner))
        elif kind in ("ObjCInterfaceDecl", "ObjCProtocolDecl") and inner:
            self.add_class(node, inner)

    def add_class(self, node, inner):
        if node["kind"] == "ObjCInterfaceDecl":
            self.classes[node["name"]] = node.get("super", {}).get("name")
        for child in inner:
            if child["kind"] == "ObjCMethodDecl":
                parameters = [self.kind(entry["type"]) for entry in child.get("inner", []) if entry["kind"] == "ParmVarDecl"]
                self.methods[(node["name"], child["name"], child["instance"])] = (parameters, self.kind(child["returnType"]))

    def value(self, node):
        if "value" in node:
            text = node["value"]
            return -float(text) if node["kind"] == "UnaryOperator" else text
        inner = self.value(node["inner"][0])
        return -float(inner) if node.get("opcode") == "-" else inner

    def kind(self, type_):
        return self.kind_of_text(type_.get("desugaredQualType", type_["qualType"]), type_["qualType"])

    def kind_of_text(self, text, written=""):
        text = re.sub(r"\b(const|_Nullable|_Nonnull|__strong|__autoreleasing|enum|struct|__unsafe_unretained)\b", "", text).strip()
        text = re.sub(r"\s+", " ", text)
        if "*" in text or "^" in text or "[" in text or text in ("id", "Class", "SEL", "instancetype", "id<NSObject>"):
            return "pointer"
        if text in C_KINDS:
            return C_KINDS[text]
        return self.known.get(text, self.known.get(written, text))

    # Types whose own declaration says what they are.
    known = {
        "AXError": "i32", "AXValueType": "u32", "CFNumberType": "i64", "CFIndex": "i64", "CFTypeID": "u64", "CFHashCode": "u64",
        "Boolean": "u8", "CFTypeRef": "pointer", "OSStatus": "i32", "EventTargetRef": "pointer", "CFArrayRef": "pointer",
        "CFDictionaryRef": "pointer", "AXUIElementRef": "pointer", "AXValueRef": "pointer", "dispatch_time_t": "u64", "ObjectType": "pointer",
        "NSApplicationActivationPolicy": "i64", "SMAppServiceStatus": "i64", "NSNotificationName": "pointer", "BOOL": "b8",
        "CGRect": "CGRect", "NSRect": "CGRect", "KeyType": "pointer", "NSUInteger": "u64", "NSRange": "NSRange", "_NSRange": "NSRange",
    }


class Bindings:
    """What the generated bindings have."""

    def __init__(self, folder):
        self.functions, self.constants, self.values, self.structures, self.classes, self.methods = {}, set(), {}, {}, {}, {}
        self.aliases, self.expressions = {}, {}
        for framework in FRAMEWORKS:
            for path in sorted((folder / framework).rglob("*.rs")):
                self.read(path.read_text())

    def read(self, text):
        plain = re.sub(r"^\s*///?.*$", "", text, flags=re.M)
        for name, target in re.findall(r"pub type (\w+) =\s*([^;]+);", plain):
            self.aliases.setdefault(name, target.strip())
        for name, target in re.findall(r"pub struct (\w+)\(pub ([\w:]+)\);", plain):
            self.aliases.setdefault(name, target)
        for name, parameters, result in re.findall(r"fn (\w+)\(([^;{]*?)\)(?:\s*->\s*([^;{]+))?;", plain):
            self.functions.setdefault(name, (parameters, result))
        for name in re.findall(r"pub static (\w+):", plain):
            self.constants.add(name)
        for packing, name, body in re.findall(r"#\[repr\(C(, packed\(2\))?\)\](?:\s*#\[[^\]]*\])*\s*pub struct (\w+) \{(.*?)\n\}", plain, re.S):
            self.structures[name] = (re.findall(r"pub (\w+):", body), bool(packing))
        for parent, name in re.findall(r"#\[unsafe\(super\((\w+)[^)]*\)\)\].*?pub struct (\w+)", plain, re.S):
            self.classes.setdefault(name, parent)
        self.read_values(plain)
        self.read_methods(plain)

    def read_values(self, text):
        for name, expression in re.findall(r"pub (?:const|static) (\w+): [\w:]+ =\s*([^;]+);", text):
            self.expressions[name] = expression
        scope = None
        alias = None
        for line in text.split("\n"):
            if found := re.match(r"\s*impl (\w+)(?:: \w+)? \{", line):
                scope = found[1]
            elif found := re.match(r'\s*#\[doc\(alias = "(\w+)"\)\]', line):
                alias = found[1]
            elif found := re.match(r"\s*(?:pub )?const (\w+)(?:: Self)? = (?:Self\()?(.*?)\)?;", line):
                self.expressions[f"{scope}::{found[1]}"] = found[2]
                if alias:
                    self.expressions[alias] = found[2]
                alias = None

    def read_methods(self, text):
        scope = None
        for chunk in re.split(r"(?=^impl\b)|(?=#\[unsafe\(method\()", text, flags=re.M):
            if found := re.match(r"impl(?:<[^\n]*?>)? (\w+)", chunk):
                scope = found[1]
            found = re.match(r"#\[unsafe\(method\(([\w:]+)\)\)\](?:\s*#\[[^\n]*\])*\s*pub (?:unsafe )?fn \w+\s*(?:<[^>]*>)?\((.*?)\)(?:\s*->\s*([^;]+?))?;", chunk, re.S)
            if scope and found:
                self.add_method(scope, *found.groups(""))

    def add_method(self, scope, selector, parameters, result):
        first = parameters.strip().split(",")[0].strip()
        is_instance = first in ("&self", "self") or first.startswith("this:")
        if selector.endswith(":_"):  # the error at the end is the result here
            selector, parameters, result = selector[:-1], parameters + ", error: *mut NSError", "bool"
        self.methods.setdefault((scope, selector, is_instance), (parameters, result))

    def number(self, name, depth=0):
        if depth > 8 or name not in self.expressions:
            return None
        expression = re.sub(r"\.0\b", "", self.expressions[name]).strip()
        expression = re.sub(r"^\w+\((.*)\)$", r"\1", expression)
        expression = re.sub(r" as \w+", "", expression)
        for word in set(re.findall(r"[A-Za-z_]\w*(?:::\w+)?", expression)):
            if re.fullmatch(r"0x[0-9a-fA-F]+", word) or word.startswith("x"):
                continue
            inner = self.number(word, depth + 1)
            if inner is None:
                return None
            expression = re.sub(rf"\b{re.escape(word)}\b", str(inner), expression)
        expression = expression.replace("!", "~")
        return eval(expression) if re.fullmatch(r"[-0-9a-fA-Fx<>|&~.() ]+", expression) else None  # numbers and operators alone

    def kinds(self, parameters):
        depth, part, parts = 0, "", []
        for character in parameters.replace("->", "  "):
            depth += character in "<([" 
            depth -= character in ">)]"
            if character == "," and depth == 0:
                parts.append(part)
                part = ""
            else:
                part += character
        parts = [entry.strip() for entry in parts + [part] if entry.strip()]
        parts = [entry for entry in parts if entry not in ("&self", "self") and not entry.startswith("this:")]
        types = [entry.split(":", 1)[1].strip() for entry in parts]
        return [self.kind(entry) for entry in types if "MainThreadMarker" not in entry]

    def kind(self, text):
        text = text.strip()
        if text in ("", "()"):
            return "void"
        if text in PRIMITIVES:
            return PRIMITIVES[text]
        if text in ("CGRect", "NSRect"):
            return "CGRect"
        if re.match(r"(&|\*|Option<|Retained<|NonNull<|CFRetained<|Allocated<|Sel\b|AXUIElement|unsafe extern)", text):
            return "pointer"
        if text in self.aliases and self.aliases[text] != text:
            return self.kind(self.aliases[text])
        return text


def main():
    folder = pathlib.Path(__file__).resolve().parent
    ours = Ours(folder, sys.argv[2] if len(sys.argv) > 2 else "clang++-19")
    theirs = Bindings(pathlib.Path(sys.argv[1]))
    same, different, absent = {}, [], []

    def compare(what, name, mine, found):
        if found is None:
            absent.append(f"{what} {name}")
        elif mine == found:
            same[what] = same.get(what, 0) + 1
        else:
            different.append(f"{what} {name}: here {mine}, there {found}")

    for name, mine in ours.functions.items():
        found = theirs.functions.get(name)
        compare("function", name, mine, found and (theirs.kinds(found[0]), theirs.kind(found[1])))
    for name in sorted(ours.constants):
        compare("exported constant", name, True, (name in theirs.constants) or None)
    for name, mine in ours.enumerators.items():
        compare("value", name, mine, theirs.number(name))
    for name, mine in ours.structures.items():
        compare("structure", name, mine, theirs.structures.get(name))
    for name, mine in ours.classes.items():
        compare("class", name, mine, theirs.classes.get(name))
    for key, mine in ours.methods.items():
        found = theirs.methods.get(key)
        sign = "-" if key[2] else "+"
        compare("method", f"{sign}[{key[0]} {key[1]}]", mine, found and (theirs.kinds(found[0]), theirs.kind(found[1])))

    for what, count in same.items():
        print(f"{what}: {count} the same")
    for line in absent:
        print(f"not in the bindings: {line}")
    for line in different:
        print(f"DIFFERENT: {line}")
    return 1 if different else 0


sys.exit(main())
