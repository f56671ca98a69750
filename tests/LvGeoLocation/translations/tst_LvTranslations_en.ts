<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="de">
<context>
    <name>tst_LvTranslations</name>
    <message>
        <source>Eigener Text</source>
        <translation>Text of its own</translation>
    </message>
</context>
</TS>
