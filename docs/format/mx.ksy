# The mx format for Kaitai Struct. README.md beside this file explains it; a test decodes every example
# with what is generated from here and compares with `mxtool explain`.
meta:
  id: mx
  title: Device description of a kv38 module
  endian: be
  ks-version: "0.10"
doc: |
  A flat sequence of groups. Texts are bytes with no code page. Bytes that no reader uses have a field too;
  files with malformed groups cannot be decoded.
seq:
  - id: groups
    type: group
    repeat: until
    repeat-until: _io.pos + 4 >= content_end
    if: _io.size > 4
instances:
  content_end:
    doc: |
      The end of the groups: the content length of a header at the start of the file, else the end of the
      file.
    value: "groups[0].id == 0 ? groups[0].payload.as<header>.content_length : _io.size"
types:
  group:
    seq:
      - id: id
        type: u2
      - id: length
        type: u2
        doc: Of the whole group, identifier, length and checksum included.
      - id: payload
        size: length - 6
        type:
          switch-on: id
          cases:
            0x0000: header
            0x0001: identity
            0x0010: parameter_block
            0x0011: data_sizes
            0x0020: entries
            0x0040: entries
            0x20c0: parameters
            0x20c1: option_lists
            0x20c2: conversions
            0x20d0: channels
            0x20d3: text_table
            0x20d7: channel_names
            0x20f0: extension
            0x20f1: product_image
            _: raw
      - id: checksum
        type: u2
        doc: Never compared.
  raw:
    doc: A group of the maker.
    seq:
      - id: payload
        size-eos: true
  header:
    seq:
      - id: content_length
        type: u2
        doc: Meaningful bytes of the file, from its start.
      - id: rest
        size-eos: true
  identity:
    seq:
      - id: datasets
        type: dataset
        repeat: eos
  dataset:
    seq:
      - id: id
        type: u1
        doc: 0xfb is the module type (u1) and the module identifier (u4).
      - id: size
        type: u1
      - id: unread
        type: u1
      - id: data
        size: size
      - id: trailer
        type: u2
  parameter_block:
    seq:
      - id: version
        type: u1
        doc: 0.
      - id: descriptor
        type: u1
      - id: skipped
        size: header_size - 2
      - id: block
        size-eos: true
    instances:
      header_size:
        value: (descriptor + 4 * (descriptor & 0x3f) + 2) % 256
  data_sizes:
    seq:
      - id: lines
        type: line
        repeat: eos
  line:
    seq:
      - id: line
        terminator: 0x0d
      - id: line_feed
        type: u1
        valid: 0x0a
  entries:
    seq:
      - id: entries
        type: entry
        repeat: eos
  entry:
    seq:
      - id: key
        terminator: 0x2c # ","
      - id: kind
        type: u1
      - id: equals_sign
        type: u1
        valid: 0x3d
      - id: value
        terminator: 0x0d
      - id: line_feed
        type: u1
        valid: 0x0a
  text_table:
    seq:
      - id: head
        type: u2
      - id: texts
        type: text_record
        repeat: eos
  text_record:
    seq:
      - id: id
        type: u2
      - id: text
        terminator: 0x0d
      - id: line_feed
        type: u1
        valid: 0x0a
  parameters:
    seq:
      - id: records
        type: parameter
        repeat: expr
        repeat-expr: _io.size / 29
      - id: rest
        size-eos: true
  parameter:
    seq:
      - id: number
        type: u1
      - id: name_id
        type: u2
      - id: position
        type: u1
        doc: Of the value in the parameter block, plus 4 (modulo 256).
      - id: datatype
        type: u1
        enum: datatype
      - id: flags
        type: u1
        doc: "Bit 2: shown in physical units."
      - id: conversion
        type: u1
      - id: option_list
        type: u1
      - id: minimum
        size: 8
        doc: A slot; a narrower value is in the last bytes.
      - id: maximum
        size: 8
      - id: unit_id
        type: u2
      - id: bit_length
        type: u1
      - id: bit_offset
        type: u1
      - id: channel
        type: u1
        doc: 255 is the module itself.
  option_lists:
    seq:
      - id: lists
        type: option_list
        repeat: eos
  option_list:
    seq:
      - id: id
        type: u1
      - id: count
        type: u1
      - id: options
        type: option
        repeat: expr
        repeat-expr: count
  option:
    seq:
      - id: value
        size: 8
      - id: text_id
        type: u2
  conversions:
    seq:
      - id: entries
        type: conversion
        repeat: expr
        repeat-expr: _io.size / 11
      - id: rest
        size-eos: true
  conversion:
    doc: Physical value = raw value x factor + offset.
    seq:
      - id: id
        type: u1
      - id: factor
        type: f4
      - id: offset
        type: f4
      - id: unit_id
        type: u2
  channels:
    seq:
      - id: records
        type: channel
        repeat: eos
  channel:
    seq:
      - id: number
        type: u1
      - id: kind
        type: u1
        doc: "Bit 7: input; bits 0 to 4: kind."
      - id: unread_2
        type: u1
      - id: bit_length
        type: u1
      - id: bit_offset
        type: u1
      - id: unread_5
        type: u1
      - id: word_count
        type: u1
      - id: word
        type: u2
        repeat: expr
        repeat-expr: word_count
    instances:
      is_input:
        value: (kind & 0x80) != 0
      data_kind:
        value: kind & 0x1f
        enum: datatype
  channel_names:
    seq:
      - id: entries
        type: channel_name
        repeat: expr
        repeat-expr: _io.size / 3
      - id: rest
        size-eos: true
  channel_name:
    seq:
      - id: channel
        type: u1
      - id: text_id
        type: u2
  extension:
    seq:
      - id: version
        type: u1
        doc: 1.
      - id: gtin_id
        type: u2
      - id: date
        size: 10
        doc: Ended early by 0x00 or CR; at most nine characters are read.
      - id: rest
        size-eos: true
  product_image:
    seq:
      - id: image
        size-eos: true
        doc: SVG, compressed with gzip.
enums:
  datatype:
    1: uint8
    2: uint16
    3: sint8
    4: sint16
    5: byte
    6: uint32
    7: sint32
    8: uint64
    9: sint64
