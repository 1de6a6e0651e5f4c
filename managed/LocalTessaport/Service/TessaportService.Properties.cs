using System;
using System.Collections.Generic;
using System.Linq;
using Quorvex.Tessaport.API.Local;

namespace Quorvex.Tessaport.API;

public partial class TessaportService
{
    public IEnumerable<PropertyDefinition> GetPropertyDefinitions(Guid driveId) =>
        PropertyCatalog.Of(Session.Begin().DriveOf(driveId)).Select(property => property.ToDefinition()).ToList();

    public PropertyValues GetProperties(List<ItemId> ids, List<string> propertyDefinitionIds)
    {
        ArgumentNullException.ThrowIfNull(ids);
        ArgumentNullException.ThrowIfNull(propertyDefinitionIds);
        var session = Session.Begin();
        var views = ids.Select(session.TryPlaceOf).OfType<DrivePlace>()
            .Where(place => !place.Drive.Offline || place.Path.Length == 0)
            .Select(place => ItemView.At(place.Drive, place.Path))
            .Where(view => view.Exists || view.IsRoot)
            .ToList();
        var properties = propertyDefinitionIds.Select(PropertyCatalog.Find).OfType<Property>().ToList();
        return new PropertyValues { Values = PropertyReader.Read(session, views, properties) };
    }
}
