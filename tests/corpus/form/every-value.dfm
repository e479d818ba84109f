inherited Root: TFXGraph [1]
  Int = -42
  Hex = $FF
  Float = 2.500000000000000000E-30
  Text = 'it''s'#13#10'Grüße' +
    #8364'x'
  Name = True
  Style = [fsBold, fsItalic]
  Lists = (
    1
    (
      'a'
      b.c)
    {00FF})
  Data = {
    0102030405060708090A0B0C0D0E0F10}
  Items = <
    item
      Name = 'first'
      Size.Width = 3
    end
    item
    end>
  inline Frame1: TFrame1
  end
end
