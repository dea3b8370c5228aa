// Parses a project file with the "xcode" package and checks that the root
// object and every identifier referred to anywhere (values and keys alike)
// is an object of the file, and that every object has an isa.
'use strict';
const xcode = require('xcode');

const path = process.argv[2];
const project = xcode.project(path);
project.parseSync();
const document = project.hash.project;

const identifier = /^A0{21}[0-9A-F]{2}$/;
const objects = new Map();
for (const [isa, section] of Object.entries(document.objects)) {
    for (const [key, value] of Object.entries(section)) {
        if (key.endsWith('_comment')) continue;
        objects.set(key, value);
        if (value.isa !== isa) fail(`${key} is filed under ${isa} but has isa ${value.isa}`);
    }
}

const referenced = new Set();
function collect(value) {
    if (typeof value === 'string') {
        if (identifier.test(value)) referenced.add(value);
    } else if (Array.isArray(value)) {
        value.forEach(collect);
    } else if (value && typeof value === 'object') {
        for (const [key, inner] of Object.entries(value)) {
            if (identifier.test(key)) referenced.add(key);
            collect(inner);
        }
    }
}
for (const object of objects.values()) collect(object);
referenced.add(document.rootObject);

const missing = [...referenced].filter((id) => !objects.has(id));
if (missing.length > 0) fail(`referenced but not defined: ${missing.join(', ')}`);
if (objects.get(document.rootObject).isa !== 'PBXProject') fail('the root object is not the project');
if (document.objectVersion !== 56 && document.objectVersion !== '56') fail(`objectVersion ${document.objectVersion}`);
console.log(`project file OK: ${objects.size} objects, ${referenced.size} referenced`);

function fail(message) {
    console.error(`project file check failed: ${message}`);
    process.exit(1);
}
